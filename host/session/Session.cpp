#include "host/session/Session.h"

#include <algorithm>
#include <cassert>

#include "host/output/HostKeys.h"
#include "platform/host/Run.h"

namespace BayesHost {

namespace {
thread_local Session* currentSession = nullptr;

// Characters, not bytes, in UTF-8 text: continuation bytes don't count.
int CountCharacters(const std::string& text, std::size_t begin, std::size_t end) {
  return static_cast<int>(std::count_if(
      text.begin() + static_cast<std::ptrdiff_t>(begin), text.begin() + static_cast<std::ptrdiff_t>(end),
      [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}
// Seeds stay within 32 bits, so that a user can type one down.
unsigned long DrawSeed() {
  std::random_device entropy;
  const unsigned long seed = entropy();
  return seed == 0 ? 1 : seed;
}
}  // namespace

SourcePlace FindPlace(const CommandText& command, std::size_t position) {
  const std::string& text = command.fSource;
  const std::size_t offset = std::min(command.fBegin + position, text.size());
  const std::size_t before = offset == 0 ? std::string::npos : text.rfind('\n', offset - 1);
  const std::size_t lineBegin = before == std::string::npos ? 0 : before + 1;
  std::size_t lineEnd = std::min(text.find('\n', offset), text.size());
  if (lineEnd > lineBegin && text[lineEnd - 1] == '\r') --lineEnd;
  SourcePlace place;
  place.fLine = 1 + static_cast<int>(std::count(text.begin(),
                                                text.begin() + static_cast<std::ptrdiff_t>(lineBegin), '\n'));
  place.fColumn = 1 + CountCharacters(text, lineBegin, offset);
  place.fLineText = text.substr(lineBegin, lineEnd - lineBegin);
  return place;
}

std::filesystem::path ResolvePath(const CommandText& command, const std::string& name) {
  return std::filesystem::path(command.fFile).parent_path() / name;
}

Session::Session(const RunOptions& options)
    : fOptions(options), fSeed(options.fSeed == 0 ? DrawSeed() : options.fSeed), fSeedSource(fSeed) {}

// The document of many groups of cases takes as long to free as the data.
Session::~Session() {
  ACAThreadFactory().ForEach(2, fOptions.fThreads, [this](int i) {
    if (i == 0) fpOutput.reset();
    if (i == 1) fpData.reset();
  });
}

Session& Session::Current() {
  assert(currentSession != nullptr);
  return *currentSession;
}

Session::Use::Use(Session& session) : fpPrevious(currentSession) {
  currentSession = &session;
}
Session::Use::~Use() {
  currentSession = fpPrevious;
}

// 53 random bits, the same on every platform (unlike the library's distributions).
double Session::DrawUniform() {
  ++fDraws;
  return static_cast<double>(fSeedSource() >> 11U) * 0x1p-53;
}

void Session::DropData() {
  fpData.reset();
  fHadDataStatement = true;
}

const char* Session::GetNoDataKey() const {
  return fHadDataStatement ? kHostDataFailed : kHostNoData;
}

void Session::BeginCommand(CommandText command, std::shared_ptr<CommandOutput> output) {
  fCommand = std::move(command);
  fpOutput = std::move(output);
  fpParserRun.reset();
  fFatal = false;
}

}  // namespace BayesHost
