// Files beside the active data set.
//
// Names that a command gave are relative to the folder of its command file.
#pragma once

#include <fstream>
#include <ios>
#include <memory>
#include <string>
#include <vector>

#include "platform/Visibility.h"
#include "platform/host/Data.h"

// A name, with this prefix, for a temporary file that the host removes when the run ends. False when no such
// file can be made.
BAYES_PLATFORM bool FormTempName(const std::string& prefix, std::string& name);

// A file by its name in a command.
class BAYES_PLATFORM ExtNameStr {
 public:
  void SetGeneric(const std::string& name) { fName = name; }
  // False when the file can't be opened; the stream then says so, too.
  bool Open(std::ofstream& stream, std::ios_base::openmode mode) const;

 private:
  std::string fName;
};

// What files say of the application that wrote them.
struct ApplicationParams {
  std::string fName;
  std::string fVersion;
  std::string fDescription;
};
BAYES_PLATFORM ApplicationParams GetAppParams();

// Tests that a file that the run wrote is there, and stores an error in the repository when it isn't. `kind`
// 6: a PMML document. The last argument is reserved; pass 1.
BAYES_PLATFORM void TestAndStoreToPes(const std::string& name, int kind, int);

// Whether models of this data set can be written to files. The flag is reserved; pass true.
BAYES_PLATFORM bool CanExportPMML(const ZARQ_DataSource& dataSource, bool);

// Makes one model file of the PMML documents of the splits. The file appears whole or not at all; what stands
// in the way is shown as an error and the run goes on.
class BAYES_PLATFORM ZARQ_PMMLPooling {
 public:
  ZARQ_PMMLPooling(const ProcedureDataSource& dataSource, const std::string& fileName);
  ~ZARQ_PMMLPooling();
  ZARQ_PMMLPooling(const ZARQ_PMMLPooling&) = delete;
  ZARQ_PMMLPooling& operator=(const ZARQ_PMMLPooling&) = delete;

  // Where to write the document of the split with these values (none: without split files), all of it before
  // the next call. Empty when no file can be written.
  void GetCurrentPMMLName(std::string& name, const std::vector<const OBS*>& splitValues);
  // Without split files the file is the document. With them it is one mining model: a segment for each
  // document with a model, under a predicate that picks the split's cases.
  void CompletePMML();

 private:
  struct State;
  std::unique_ptr<State> fpState;
};
