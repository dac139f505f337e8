#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/data/CsvCell.h"
#include "host/data/CsvDialect.h"
#include "host/data/CsvScanner.h"
#include "host/data/DataFile.h"
#include "host/data/Dictionary.h"
#include "host/data/TableSource.h"

namespace BayesHost {

// A text table. Its first record holds the variable names, unless it looks like a case: it has a number in
// it, and no text above a column of numbers. Then the variables are called V1, V2, ... A column without a
// name is called after its position, too. A variable is numeric when no cell of the sample (the first 20,480
// records or 8 MB) speaks against it, or else when the dictionary says so.
class CsvFile : public TableSource {
 public:
  // Throws DataError: see CsvDialect::Settle; repeated names; a damaged record in the sample; a dictionary
  // (null: none) that doesn't fit.
  explicit CsvFile(DataFile file, const Dictionary* dictionary = nullptr);

  const std::vector<VariableState>& GetVariables() const override { return fvVariables; }
  std::string MakeQuery(const std::vector<int>& columns) const override;
  bool AllowLongerRecords() override;
  // Refuses digits too large for a double; words for infinity are missing values.
  void CheckInfinite(const std::vector<int>& columns) const override;
  // Reads the file again, up to the first record that is damaged or holds text in a numeric column.
  [[noreturn]] void Explain(const std::vector<int>& columns, const std::string& engineText) const override;

 private:
  using ColumnType = Dictionary::Type;

  // What the sample tells of a column.
  struct Profile {
    bool fNumbers = false;
    bool fBooleans = false;
    bool fText = false;
    int fDecimals = 0;
    std::size_t fWidth = 1;
    std::optional<ColumnType> fDeclared;  // by the dictionary
    std::uint64_t fTextLine = 0;          // of the first text
    std::string fTextCell;
    bool HasValue() const { return fNumbers || fBooleans || fText; }
    ColumnType GetType() const;
  };

  void ReadFirstRecord();
  void NameVariables();
  void CheckNames() const;
  std::vector<Profile> ReadSample(char decimal, std::set<std::string>& missingCells) const;
  std::vector<Profile> SettleDecimal();
  bool LooksLikeCase(const std::vector<Profile>& profiles) const;
  std::string ExplainText(const Profile& profile, std::size_t column) const;
  void MakeVariables(const std::vector<Profile>& profiles);
  void ApplyDictionary(const Dictionary& dictionary, std::vector<Profile>& profiles);
  void TakeMissingWords(const Dictionary* dictionary);
  bool IsMissingWord(int column, std::string_view cell) const;
  bool Fits(int column, std::string_view cell) const;
  std::string MakeExpression(int column) const;
  // To the first record behind the names.
  CsvScanner OpenData() const;
  void CheckRecord(const CsvScanner& scanner) const;
  void CheckCells(const CsvScanner& scanner) const;
  std::string DeclareColumns(const std::vector<int>& columns) const;
  std::string DescribeDialect() const;
  [[noreturn]] void Refuse(std::uint64_t line, int column, const std::string& text) const;

  DataFile fFile;
  CsvDialect fDialect;
  bool fHasNames = true;
  bool fHasLongRecords = false;
  std::vector<std::string> fvNames;  // at first the first record's cells
  std::vector<ColumnType> fvTypes;
  std::vector<VariableState> fvVariables;
  std::set<std::string> fMissingCells;
  std::vector<std::vector<std::string>> fvMissingWords;  // of each column, beside those of every column
};

}  // namespace BayesHost
