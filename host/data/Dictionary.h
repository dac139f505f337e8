#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/data/DataFile.h"
#include "host/data/Variable.h"

namespace BayesHost {

// What a data file doesn't say of its variables, from a Frictionless Table Schema
// (specs.frictionlessdata.io): types, titles, values that mean missing, labels of values.
class Dictionary {
 public:
  enum class Type { AsFound, Number, Boolean, Text };

  struct Field {
    std::string fName;
    Type fType = Type::AsFound;
    std::string fTypeName;  // as the schema has it
    std::string fTitle;
    std::optional<int> fDecimals;
    std::optional<VariableState::Level> fLevel;
    std::vector<std::pair<OBS, std::string>> fvCategories;  // an empty label: none
    std::vector<std::pair<OBS, std::string>> fvMissing;     // the same
  };

  // Throws DataError naming file and field.
  explicit Dictionary(DataFile file);
  // The dictionary that belongs to a data file: NAME.json beside NAME.csv. A JSON file without "fields" is
  // something else, and so is the data file itself.
  static std::optional<Dictionary> FindBeside(const DataFile& data);

  // Null for a variable that the dictionary doesn't have.
  const Field* Find(const std::string& variable) const;
  // There are fields, and each has one of these names.
  bool IsOf(const std::vector<std::string>& names) const;
  // Throws DataError when a field is none of these variables.
  void CheckNames(const std::vector<std::string>& variables) const;
  // Adds what the field says to a variable whose type and format are settled. Throws DataError when the types
  // differ.
  void Complete(VariableState& variable) const;
  // Texts that mean missing in a column of numbers and are none themselves.
  std::vector<std::string> ListMissingWords(const std::string& variable) const;

 private:
  [[noreturn]] void Refuse(const std::string& field, const std::string& text) const;
  [[noreturn]] void RefuseJson(const std::string& text, std::size_t byte) const;
  OBS Convert(const Field& field, const OBS& value, bool toText) const;
  void AddMissing(const Field& field, VariableState& variable) const;

  DataFile fFile;
  std::map<std::string, Field> fFields;
};

}  // namespace BayesHost
