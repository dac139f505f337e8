#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/files/TempFile.h"
#include "platform/host/Data.h"

namespace BayesHost {

// A variable that splits the cases, as the dictionary of a joined document describes it.
struct SplitField {
  std::string fName;
  std::string fLabel;
  bool fIsString = false;
  // What the splits have, each once, with its label; nothing missing.
  std::vector<std::pair<OBS, std::string>> fvValues;
};

// Joins PMML documents of one model each, fitted to one split each, into a document with a mining model. Only
// the fields are held in memory: the models wait in a temporary file. Throws std::system_error when that is
// full.
class PmmlJoin {
 public:
  explicit PmmlJoin(std::vector<SplitField> fields);
  ~PmmlJoin();

  // The model of a split, whose cases have these values: none where the value is missing. False: the document
  // is broken. One without a model adds nothing.
  bool Add(const std::string& document, const std::vector<const OBS*>& splitValues);
  std::size_t CountSegments() const { return fSegments; }
  // After at least one model.
  void Write(std::ostream& stream);

 private:
  struct Fields;  // header, dictionary and mining schema so far

  void Spool(const std::string& text);

  std::vector<SplitField> fvSplitFields;
  std::unique_ptr<Fields> fpFields;
  TempFile fModels;
  std::uint64_t fBytes = 0;
  std::size_t fSegments = 0;
};

}  // namespace BayesHost
