// The command's output: notes, messages, headings and pivot tables. The calls describe what is shown, never
// how.
//
// Every text is a BpCellText. Handles (heading, table, dimension, group, category) are cheap to copy and
// refer to the document.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Visibility.h"
#include "platform/host/Data.h"

// How a number is shown. Made by the functions of BpProcedure.
struct BpFormatSpec {
  enum Kind {
    kCount,
    kMean,
    kStdDev,
    kVarSquared,
    kCorrelation,
    kCoefficient,
    kGeneralStat,
    kSignificance,
    kPercent,
    kResidual,
    kSigDigit
  };
  Kind fKind = kGeneralStat;
  // Decimals of the variable's own print format, where the kind follows a variable.
  int fVariableDecimals = 0;
};

class BAYES_PLATFORM BpCellText {
 public:
  struct State;
  virtual ~BpCellText();
  const State& GetState() const { return *fpState; }

 protected:
  explicit BpCellText(std::shared_ptr<State> state);
  std::shared_ptr<State> fpState;
};

// A key of the string table (translatable) or a plain text.
class BAYES_PLATFORM BpString : public BpCellText {
 public:
  BpString(const std::string& text, bool translatable);
};

// A number; the missing value is allowed.
class BAYES_PLATFORM BpNumber : public BpCellText {
 public:
  BpNumber(double value, BpFormatSpec format);
};

class BAYES_PLATFORM BpVariable : public BpCellText {
 public:
  enum Show { kDefault = 0, kLabelElseName = 2 };
  explicit BpVariable(const ZARQ_Variable& variable, Show show = kDefault);
};

// A value as its variable shows it: value label, else the value itself.
class BAYES_PLATFORM BpDataValue : public BpCellText {
 public:
  BpDataValue(const OBS& value, const ZARQ_Variable& variable);
};

// A key with placeholders and the parts that fill them, in order.
class BAYES_PLATFORM BpComposite : public BpCellText {
 public:
  BpComposite(const std::string& key, bool translatable);

  void Add(const BpCellText& part);
  // Opens the key's list part: what is added next fills it, item by item.
  void Sublist();
  // Fills the open list with the current split's variables and values.
  void SplitList();
  void EndSublist();
  // No part can be added after it.
  void Finish();
};

// A footnote, made of a finished composite.
class BAYES_PLATFORM BpAnnotation {
 public:
  explicit BpAnnotation(const BpComposite& text);
  const BpComposite& GetText() const { return fText; }

 private:
  BpComposite fText;
};

class BAYES_PLATFORM BpCategory {
 public:
  struct State;
  explicit BpCategory(std::shared_ptr<State> state);

  // Makes the category its dimension's current one and writes the cell at the crossing of the current
  // categories of all dimensions.
  void Cell(const BpCellText& content);
  // A footnote on the category's label.
  void Note(const BpAnnotation& note);
  // A footnote on that cell.
  void CellNote(const BpAnnotation& note);

 private:
  std::shared_ptr<State> fpState;
};

class BAYES_PLATFORM BpGroup {
 public:
  struct State;
  explicit BpGroup(std::shared_ptr<State> state);

  // The category of that identity (the variable, the value or the key, not the words shown; a composite's is
  // its key and its parts), found or added; it becomes its dimension's current one.
  BpCategory Category(const BpCellText& text);
  // A nested group, found or added. `sort` 2: categories stand in the order of their creation.
  BpGroup Group(const BpCellText& text, bool showLabel, int sort);

 protected:
  std::shared_ptr<State> fpState;
};

class BAYES_PLATFORM BpDimension : public BpGroup {
 public:
  enum Place { kRows, kColumns, kLayers };
  using BpGroup::BpGroup;

  // `index`: 1-based order among the dimensions of the same place. The flags are reserved; pass true.
  void Position(Place place, int index, bool, bool);
};

class BAYES_PLATFORM BpPivotTable {
 public:
  struct State;
  explicit BpPivotTable(std::shared_ptr<State> state);

  // `sort` 2: categories stand in the order of their creation.
  BpDimension Dimension(const BpCellText& label, int sort);
  void Caption(const BpCellText& text);
  // A footnote on the whole table.
  void Note(const BpAnnotation& note);
  // In characters; a hint for readers that lay out columns.
  void MinDataColumnWidth(int characters);

 private:
  std::shared_ptr<State> fpState;
};

// A place in the document under which tables and headings stand.
class BAYES_PLATFORM BpHeading {
 public:
  struct State;
  explicit BpHeading(std::shared_ptr<State> state);

  // A heading under this one, open until Close.
  BpHeading Heading(const BpCellText& text);
  void Close();
  // `shown` false prepares a table that no reader shows.
  BpPivotTable PivotTable(const BpCellText& title, const BpCellText& subtype, bool shown);

 protected:
  std::shared_ptr<State> fpState;
};

// The output of one command, from construction to destruction.
class BAYES_PLATFORM BpProcedure : public BpHeading {
 public:
  // `kind` is reserved; pass 10.
  BpProcedure(const std::string& title, int kind);
  ~BpProcedure();
  BpProcedure(const BpProcedure&) = delete;
  BpProcedure& operator=(const BpProcedure&) = delete;

  static BpFormatSpec Count();
  static BpFormatSpec GeneralStat();
  static BpFormatSpec Significance();
  static BpFormatSpec Coefficient();
  static BpFormatSpec Correlation();
  static BpFormatSpec Percent();
  static BpFormatSpec Residual();
  // As many digits as the number needs.
  static BpFormatSpec SigDigit();
  // Formats that follow the variables' print formats (the one with most decimals).
  static BpFormatSpec Mean(const std::vector<const ZARQ_Variable*>& variables);
  static BpFormatSpec StdDev(const std::vector<const ZARQ_Variable*>& variables);
  static BpFormatSpec VarSquared(const std::vector<const ZARQ_Variable*>& variables);
};

enum BpErrorShow { kBpErrorShowAll = 2 };
enum BpErrorLevel { kBpErrorLevelWarning = 2, kBpErrorLevelError = 3 };

// Shows a message; at error level the command counts as failed.
BAYES_PLATFORM void BpError(const BpCellText& text, BpErrorShow show, BpErrorLevel level);

// One entry of the notes table. Sections: 2 files, 3 saved variables, 4 case handling.
BAYES_PLATFORM void AddNotes(int section, const BpCellText& label, const BpCellText& value);

// The debug channel, for developers; silent unless the host is asked to show it.
class BAYES_PLATFORM BP_Character {
 public:
  explicit BP_Character(std::string text) : fText(std::move(text)) {}
  const std::string& GetText() const { return fText; }

 private:
  std::string fText;
};
BAYES_PLATFORM void BP_ToFront(const BP_Character& text);

struct BAYES_PLATFORM ACACommonDisplay {
  static void DisplayI(const std::string& label, int value);
  static void DisplayB(const std::string& label, bool value);
  static void DisplayBV(const std::string& label, const std::vector<bool>& values);
};
