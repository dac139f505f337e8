// Writes JSON that people can read and compare line by line: an object or array that fits on a line stands on
// one, else each of its members begins a line of its own, one blank further in. The outermost one always
// fills several lines. No more than a line is held back, however long the document is.
#pragma once

#include <charconv>
#include <concepts>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace BayesHost {

class JsonWriter {
 public:
  explicit JsonWriter(std::ostream& out) : fOut(out) {}
  JsonWriter(const JsonWriter&) = delete;
  JsonWriter& operator=(const JsonWriter&) = delete;

  void BeginObject() { Begin('{', '}'); }
  void BeginArray() { Begin('[', ']'); }
  void End();

  // Before each value of an object.
  void Key(std::string_view key);
  // Bytes that are no UTF-8 are replaced.
  void Value(std::string_view text);
  void Value(const char* text) { Value(std::string_view(text)); }
  // A finite number, to its last digit; it reads as a real number also when it is a whole one.
  void Value(double number);
  void Value(bool truth) { Scalar(truth ? "true" : "false"); }
  void Value(std::integral auto number) {
    char text[24];
    Scalar({text, std::to_chars(text, text + sizeof text, number).ptr});
  }
  void Null() { Scalar("null"); }

  // Of an object: a value, or an array of values.
  template <class T>
  void Member(std::string_view key, const T& value) {
    Key(key);
    Value(value);
  }
  template <class Range>
  void Members(std::string_view key, const Range& values) {
    Key(key);
    BeginArray();
    for (const auto& value : values) Value(value);
    End();
  }

 private:
  struct Open {
    char fClosing;
    bool fIsEmpty;
    std::size_t fBegin;        // in the line, when held back
    std::size_t fFirstMember;  // in fvMembers
  };

  void Begin(char opening, char closing);
  void Scalar(std::string_view text);
  void BeginValue();
  void BeginMember();
  void Put(std::string_view text);
  void Quote(std::string_view text);
  void BreakLongLine(std::size_t more);
  void BreakOutermost();
  void NewLine(std::size_t indent);
  bool HoldsBack() const { return fBroken < fvOpen.size(); }

  std::ostream& fOut;
  std::vector<Open> fvOpen;
  std::size_t fBroken = 0;             // the outermost ones, which fill several lines
  std::string fLine;                   // held back: from the first one that may still fit on a line
  std::vector<std::size_t> fvMembers;  // where its members, and those of the ones in it, begin
  std::string fQuoted;                 // room for a text in quotes
  bool fAfterKey = false;
};

}  // namespace BayesHost
