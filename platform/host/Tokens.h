// The command text as the host's lexer leaves it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Visibility.h"

// One token of a command, with its place in the text. A value: tokens may be copied and kept.
class BAYES_PLATFORM ZARQ_Token {
 public:
  enum class Kind { Identifier, Number, QuotedText, Operator };

  // Operator code of ';' between the rows of a matrix.
  static constexpr int kRowSeparator = 17;

  // `position` is the byte offset in the command text. `leading`: the token opens a parameter or a keyword
  // (rather than being a value of the one before).
  ZARQ_Token(Kind kind, std::string text, std::size_t position, double number = 0, int operatorCode = -1,
             bool leading = false);

  Kind GetKind() const { return fKind; }
  bool IsNumber() const { return fKind == Kind::Number; }
  bool IsLeading() const { return fLeading; }
  // As written; quotes removed and doubled quotes resolved.
  const std::string& GetText() const { return fText; }
  // Meaningful only when IsNumber().
  double GetNumber() const { return fNumber; }
  // -1 when the token is no operator.
  int GetOperatorCode() const { return fOperatorCode; }
  std::size_t GetPosition() const { return fPosition; }

 private:
  Kind fKind;
  std::string fText;
  std::size_t fPosition;
  double fNumber;
  int fOperatorCode;
  bool fLeading;
};

// The tokens of the run's current command, lexed when first asked for. The module hands it on and reads
// nothing from it.
class BAYES_PLATFORM ZARQ_TokenSequence {
 public:
  // `wholeCommand` true: from the command's name to its terminating period.
  explicit ZARQ_TokenSequence(bool wholeCommand);
  ~ZARQ_TokenSequence();
  ZARQ_TokenSequence(const ZARQ_TokenSequence&) = delete;
  ZARQ_TokenSequence& operator=(const ZARQ_TokenSequence&) = delete;

  struct State;
  const State& GetState() const { return *fpState; }

 private:
  std::unique_ptr<State> fpState;
};
