// The grammar of a command, declared by the module as data and checked (and explained) by the host.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Visibility.h"

// The codes of a declaration. The numbers are fixed: modules are compiled against them.
struct UPSpecTypes {
  enum SubComSpec {
    kUnnamedBody = 0,      // the body is one unnamed specification
    kNamedParameters = 1,  // NAME=value ...
    kBareOrOneValue = 2    // each parameter bare or with one value
  };
  enum ParamSpec {
    kTokenList = 2,  // variable names or values; matrices with row separators
    kKeyword = 3,    // exactly one of the string values
    kQuotedText = 4,
    kKeywords = 5,  // one or more of the string values
    kNumber = 7,    // one number, or one of the string values if any are declared
    kNumbers = 8,
    kInteger = 9,         // one integer, or one of the string values if any are declared
    kVariable = 15,       // one variable name
    kVariablePairs = 16,  // a WITH b, or a b
    kTable = 17,          // rows BY columns
    kFile = 20,           // a quoted path
    kQualifier = 27       // one keyword of the qualifiers, each with its own values
  };
  enum BracketOptions { kBracketsFree = 0 };
  enum LowerBdryOptions { kAtLeast = 1, kGreaterThan = 2 };
  enum UpperBdryOptions { kAtMost = 1, kLessThan = 2 };
  enum QualifOptions { kExactlyOneQualifier = 1 };
};

template <class Option>
struct UPBoundary {
  double value;
  Option option;
};

// A parameter of a subcommand, or a qualifier of one that takes values of its own.
class BAYES_PLATFORM ParamDescriptor {
 public:
  // `required`: the subcommand must have it. `valueRequired`: parentheses after it may not be empty; for a
  // parameter also: it may not stand bare.
  ParamDescriptor(std::string name, UPSpecTypes::ParamSpec spec, bool required, bool valueRequired,
                  UPSpecTypes::BracketOptions brackets);

  void addStringValue(const std::string& keyword);
  // A qualifier without values.
  void addQualifDesc(const std::string& keyword);
  void addQualifDesc(const ParamDescriptor& qualifier);
  // Boundaries hold for every number of the parameter.
  void setLowerBoundary(double bound, UPSpecTypes::LowerBdryOptions option);
  void setUpperBoundary(double bound, UPSpecTypes::UpperBdryOptions option);
  void setQualifOption(UPSpecTypes::QualifOptions option);

  const std::string& GetName() const { return fName; }
  UPSpecTypes::ParamSpec GetSpec() const { return fSpec; }
  bool IsRequired() const { return fRequired; }
  bool IsValueRequired() const { return fValueRequired; }
  const std::vector<std::string>& GetStringValues() const { return fvStringValues; }
  // Bare qualifiers are descriptors with `IsBare()`.
  const std::vector<ParamDescriptor>& GetQualifiers() const { return fvQualifiers; }
  bool IsBare() const { return fBare; }
  const std::optional<UPBoundary<UPSpecTypes::LowerBdryOptions>>& GetLowerBoundary() const { return fLower; }
  const std::optional<UPBoundary<UPSpecTypes::UpperBdryOptions>>& GetUpperBoundary() const { return fUpper; }
  bool NeedsExactlyOneQualifier() const { return fExactlyOneQualifier; }

 private:
  std::string fName;
  UPSpecTypes::ParamSpec fSpec;
  bool fRequired;
  bool fValueRequired;
  bool fBare = false;
  bool fExactlyOneQualifier = false;
  std::vector<std::string> fvStringValues;
  std::vector<ParamDescriptor> fvQualifiers;
  std::optional<UPBoundary<UPSpecTypes::LowerBdryOptions>> fLower;
  std::optional<UPBoundary<UPSpecTypes::UpperBdryOptions>> fUpper;
};

class BAYES_PLATFORM SubComDescriptor {
 public:
  SubComDescriptor(std::string name, UPSpecTypes::SubComSpec spec, bool required, bool repeatable);

  void addParamDesc(const ParamDescriptor& param);
  void addParamDesc(const std::string& name, UPSpecTypes::ParamSpec spec, bool required, bool valueRequired,
                    UPSpecTypes::BracketOptions brackets);
  // The specification that is the whole body of a subcommand without named parameters. One with a name stands
  // behind its name (`BY a b`), or is one of its string values instead (`OFF`).
  void setExportParamDesc(const ParamDescriptor& param);

  const std::string& GetName() const { return fName; }
  UPSpecTypes::SubComSpec GetSpec() const { return fSpec; }
  bool IsRequired() const { return fRequired; }
  bool IsRepeatable() const { return fRepeatable; }
  const std::vector<ParamDescriptor>& GetParams() const { return fvParams; }
  const std::optional<ParamDescriptor>& GetExportParam() const { return fExportParam; }

 private:
  std::string fName;
  UPSpecTypes::SubComSpec fSpec;
  bool fRequired;
  bool fRepeatable;
  std::vector<ParamDescriptor> fvParams;
  std::optional<ParamDescriptor> fExportParam;
};

// A command's whole grammar. Everything added is copied.
class BAYES_PLATFORM CommandDescriptor {
 public:
  CommandDescriptor(std::string commandName, std::string procTitle);

  void addSubComDesc(const SubComDescriptor& subcommand);

  const std::string& GetCommandName() const { return fCommandName; }
  const std::string& GetProcTitle() const { return fProcTitle; }
  const std::vector<SubComDescriptor>& GetSubComs() const { return fvSubComs; }

 private:
  std::string fCommandName;
  std::string fProcTitle;
  std::vector<SubComDescriptor> fvSubComs;
};
