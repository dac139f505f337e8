#include "host/data/DataSet.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "host/data/DataError.h"
#include "host/files/TempFile.h"
#include "platform/component/Common.h"
#include "platform/host/Run.h"

namespace BayesHost {

namespace {

constexpr double kMissing = MCCommon_850::MCMV::Missing();

constexpr std::size_t Index(int i) {
  return static_cast<std::size_t>(i);
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

// Half of the memory goes to the data that are kept, half to the engine, which works beside them and can't
// read a text file with less than this for each of its threads.
constexpr std::size_t kLeastEngineBytes = std::size_t{32} << 20;

// The engine is done when cases are sorted: some of its half serves.
constexpr std::size_t kSortShare = 8;
constexpr std::size_t kLeastSortBytes = std::size_t{4} << 20;
constexpr std::size_t kBlockRows = ColumnStore::kBlockRows;
constexpr std::size_t kBlockBytes = kBlockRows * sizeof(double);

// A query runs on one thread: see SqlTable.
Engine::Options MakeEngineOptions(const DataFile& file, const DataSet::Limits& limits, bool hasQuery) {
  const int threads = hasQuery ? 1 : std::max(limits.fThreads, 1);
  const std::size_t least = kLeastEngineBytes * Index(threads);
  const bool opensAhead = limits.fIsToBeRead && limits.fThreads > 1;
  return {.fThreads = threads,
          .fMemoryBytes = std::max(limits.fMemoryBytes / 2, least),
          .fTempFolder = GetTempFolder(),
          .fvFiles = {file.fPath},
          .fOpensAhead = opensAhead,
          .fStop = limits.fStop};
}

// Fewer cases than this are sorted sooner than another thread has begun.
constexpr std::uint64_t kLeastSortShare = std::uint64_t{1} << 16;

// The cursor's cases that have a place in this stretch of the order, which begins at `begin`.
void GatherStretch(CaseCursor& cursor, std::span<const std::uint32_t> places, std::size_t begin,
                   std::span<double> stretch) {
  std::size_t row = cursor.GetPosition();
  while (const std::size_t count = cursor.NextRun()) {
    const double* const values = cursor.GetRun(0);
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t place = places[row++] - begin;  // beyond all places for a case before the stretch
      if (place < stretch.size()) stretch[place] = values[i];
    }
  }
}

}  // namespace

DataSet::DataSet(DataFile file, const Limits& limits, const DataOptions& options)
    : fFile(std::move(file)),
      fLimits(limits),
      fBudget(limits.fMemoryBytes / 2),
      fEngine(MakeEngineOptions(fFile, limits, !options.fSql.empty())),
      fpSource(OpenTable(fFile, options, fEngine)),
      fSortBlocks(std::max(limits.fMemoryBytes / kSortShare, kLeastSortBytes) / kBlockBytes) {
  fFileBytes = std::filesystem::file_size(fFile.fPath);
  for (const VariableState& state : fpSource->GetVariables()) {
    fVariables.emplace_back(std::make_shared<const VariableState>(state));
  }
  fFileVariables = fVariables.size();
  fvPlaces.resize(fFileVariables);
  fvPools.resize(fFileVariables);
}

DataSet::~DataSet() = default;

int DataSet::FindVariable(std::string_view name) const {
  int similar = -1;
  int similarCount = 0;
  for (int i = 0; i < CountVariables(); ++i) {
    const std::string& candidate = GetVariable(i).GetName();
    if (candidate == name) return i;
    if (!EqualIgnoringCase(candidate, name)) continue;
    similar = i;
    ++similarCount;
  }
  return similarCount == 1 ? similar : -1;
}

ZARQ_Variable& DataSet::MakeVariable() {
  fVariables.emplace_back(std::make_shared<const VariableState>());
  fvPlaces.emplace_back();
  fvPools.emplace_back();
  return fVariables.back();
}

std::vector<int> DataSet::ListUnfilled() const {
  std::vector<int> unfilled;
  for (std::size_t i = fFileVariables; i < fvPlaces.size(); ++i) {
    if (fvPlaces[i].fpStore == nullptr) unfilled.push_back(static_cast<int>(i));
  }
  return unfilled;
}

void DataSet::GiveValues(const std::vector<int>& variables, std::unique_ptr<ColumnStore> store) {
  GetGroups();
  if (fpIndex->IsFileOrder()) return Adopt(variables, std::move(store));
  const std::vector<std::uint32_t> rows = fpIndex->MakeRows();
  for (std::size_t i = 0; i < variables.size(); ++i) {
    Adopt({variables[i]}, Rearrange({store.get(), static_cast<int>(i)}, rows));
  }
}

void DataSet::FillWithMissing(const std::vector<int>& variables) {
  CountCases();
  for (const int variable : variables) {
    auto store = std::make_unique<ColumnStore>(fBudget, 1);
    while (store->CountRows() < fCases) {
      const auto count = std::min<std::uint64_t>(fCases - store->CountRows(), store->GetRoom());
      std::fill_n(store->GetTail(0), count, kMissing);
      store->Advance(count);
    }
    store->Finish();
    Adopt({variable}, std::move(store));
  }
}

void DataSet::SetSplit(std::vector<int> variables) {
  fvSplit = std::move(variables);
  fpIndex.reset();
  fSorted.clear();
}

void DataSet::SetWeight(int variable) {
  if (variable >= 0 && GetVariable(variable).IsString()) {
    throw DataError({fFile.fName, 0, variable + 1, GetVariable(variable).GetName()},
                    "A string can't be the weight. Name a numeric variable.");
  }
  fWeight = variable;
}

void DataSet::Require(const std::vector<int>& variables) {
  fvRequired.insert(fvRequired.end(), variables.begin(), variables.end());
}

void DataSet::Expect(const std::vector<int>& variables) {
  fvExpected.insert(fvExpected.end(), variables.begin(), variables.end());
}

// In the order of the file, each once.
std::vector<int> DataSet::ListUnread(std::vector<int> wanted) const {
  std::sort(wanted.begin(), wanted.end());
  wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
  std::erase_if(wanted, [this](int i) { return fvPlaces[Index(i)].fpStore != nullptr; });
  return wanted;
}

// What a failed command required is forgotten with it.
bool DataSet::Load() {
  std::vector<int> required = std::exchange(fvRequired, {});
  required.insert(required.end(), fvSplit.begin(), fvSplit.end());
  if (fWeight >= 0) required.push_back(fWeight);
  required = ListUnread(std::move(required));
  const auto made =
      std::find_if(required.begin(), required.end(), [this](int i) { return Index(i) >= fFileVariables; });
  const std::vector<int> unfilled(made, required.end());
  required.erase(made, required.end());
  if (!unfilled.empty()) FillWithMissing(unfilled);
  if (required.empty()) return true;

  std::vector<int> all = std::exchange(fvExpected, {});
  all.insert(all.end(), required.begin(), required.end());
  all = ListUnread(std::move(all));
  try {
    return LoadColumns(all);
  } catch (const DataError&) {
    if (all.size() == required.size()) throw;
  }
  return LoadColumns(required);
}

bool DataSet::LoadColumns(const std::vector<int>& variables) {
  if (fLimits.IsStopped()) return false;
  auto store = std::make_unique<ColumnStore>(fBudget, static_cast<int>(variables.size()));
  try {
    if (!ReadColumns(variables, *store)) return false;
  } catch (const EngineError& error) {
    store.reset();
    if (fLimits.IsStopped()) return false;
    if (fpSource->AllowLongerRecords()) return LoadColumns(variables);
    fpSource->Explain(variables, error.what());
  }
  Adopt(variables, std::move(store));
  return true;
}

bool DataSet::ReadColumns(const std::vector<int>& variables, ColumnStore& store) {
  fpSource->Prepare();
  for (const int variable : variables) fvPools[Index(variable)] = {};
  bool isFinite = true;
  Engine::Stream stream = fEngine.Query(fpSource->MakeQuery(variables));
  while (stream.Next()) {
    if (fLimits.IsStopped()) return false;
    isFinite &= TakeRows(stream, variables, store);
  }
  store.Finish();
  if (!isFinite) fpSource->CheckInfinite(variables);
  return true;
}

// False when an infinite number was among them.
bool DataSet::TakeRows(const Engine::Stream& stream, const std::vector<int>& variables, ColumnStore& store) {
  std::array<std::string_view, ColumnStore::kBlockRows> texts;
  const std::size_t rows = stream.CountRows();
  bool isFinite = true;
  for (std::size_t from = 0; from < rows;) {
    const std::size_t count = std::min(rows - from, store.GetRoom());
    for (std::size_t i = 0; i < variables.size(); ++i) {
      double* tail = store.GetTail(static_cast<int>(i));
      if (GetVariable(variables[i]).IsString()) {
        stream.GetStrings(i, from, count, texts.data());
        EncodeStrings(texts.data(), count, fvPools[Index(variables[i])], tail);
      } else {
        isFinite &= stream.GetNumbers(i, from, count, tail);
      }
    }
    store.Advance(count);
    from += count;
  }
  return isFinite;
}

// A string of blanks says as little as an empty one.
void DataSet::EncodeStrings(const std::string_view* texts, std::size_t count, StringPool& pool,
                            double* codes) {
  for (std::size_t i = 0; i < count; ++i) {
    const bool blank = texts[i].find_first_not_of(' ') == std::string_view::npos;
    codes[i] = blank ? kMissing : pool.Encode(texts[i]);
  }
}

void DataSet::Adopt(const std::vector<int>& variables, std::unique_ptr<ColumnStore> store) {
  if (!fvStores.empty() && store->CountRows() != fCases) {
    throw DataError({fFile.fName, 0, 0, {}},
                    "The file has changed since it was first read. Start again with it.");
  }
  fCases = store->CountRows();
  for (std::size_t i = 0; i < variables.size(); ++i) {
    fvPlaces[Index(variables[i])] = {store.get(), static_cast<int>(i)};
  }
  fvStores.push_back(std::move(store));
}

std::uint64_t DataSet::CountCases() {
  if (!fvStores.empty()) return fCases;
  if (fvRequired.empty()) Require({0});
  Load();
  return fCases;
}

std::vector<ColumnPlace> DataSet::FindPlaces(const std::vector<int>& variables) const {
  std::vector<ColumnPlace> places;
  places.reserve(variables.size());
  for (const int variable : variables) places.push_back(fvPlaces[Index(variable)]);
  return places;
}

const std::vector<SplitIndex::Group>& DataSet::GetGroups() {
  if (!fpIndex && fvSplit.empty()) fpIndex = std::make_unique<SplitIndex>(fCases);
  if (!fpIndex) {
    const auto decode = [this](int i, double value) { return Decode(fvSplit[Index(i)], value); };
    fpIndex = std::make_unique<SplitIndex>(CaseCursor(FindPlaces(fvSplit)), fCases,
                                           static_cast<int>(fvSplit.size()), decode, CountSortThreads());
  }
  return fpIndex->GetGroups();
}

CaseCursor DataSet::MakeCursor(const std::vector<int>& variables) {
  GetGroups();
  if (fpIndex->IsFileOrder()) return CaseCursor(FindPlaces(variables));
  SortColumns(variables);
  std::vector<ColumnPlace> places;
  places.reserve(variables.size());
  for (const int variable : variables) places.push_back({fSorted.at(variable).get(), 0});
  return CaseCursor(places);
}

int DataSet::CountSortThreads() const {
  const std::uint64_t shares = fCases / kLeastSortShare;
  return static_cast<int>(std::clamp<std::uint64_t>(shares, 1, Index(std::max(fLimits.fThreads, 1))));
}

void DataSet::SortColumns(const std::vector<int>& variables) {
  for (const int variable : variables) {
    if (fSorted.contains(variable)) continue;
    fSorted.emplace(variable, Rearrange(fvPlaces[Index(variable)], fpIndex->GetPositions()));
  }
}

// A copy in another order, given the new place of each row. Cases taken one by one from a file would cost a
// read each: instead each pass over the column, from first to last, gathers the next stretch of the order in
// memory, which becomes a part of the copy as it is.
std::unique_ptr<ColumnStore> DataSet::Rearrange(const ColumnPlace& column,
                                                std::span<const std::uint32_t> places) {
  auto sorted = std::make_unique<ColumnStore>(fBudget, 1);
  const int threads = CountSortThreads();
  while (const std::size_t left = places.size() - sorted->CountRows()) {
    const std::size_t begin = sorted->CountRows();
    const std::size_t blocks = std::min((left - 1) / kBlockRows + 1, fSortBlocks);
    Slab slab(blocks * kBlockRows);
    ACAThreadFactory().ForEach(threads, threads, [&](int share) {
      slab.Populate(CutShare(blocks, share, threads) * kBlockRows,
                    CutShare(blocks, share + 1, threads) * kBlockRows);
      CaseCursor cursor({column});
      cursor.SetRange(CutShare(fCases, share, threads), CutShare(fCases, share + 1, threads));
      GatherStretch(cursor, places, begin, {slab.Get(), blocks * kBlockRows});
    });
    sorted->Add(std::move(slab), std::min(left, blocks * kBlockRows));
  }
  return sorted;
}

double DataSet::Encode(int variable, const OBS& value) const {
  if (value.IsString() != GetVariable(variable).IsString()) return kMissing;
  if (!value.IsString()) return value.GetNumber();
  const double code = GetStrings(variable).Find(value.GetString());
  return code < 0 ? kMissing : code;
}

OBS DataSet::Decode(int variable, double value) const {
  if (!GetVariable(variable).IsString()) return OBS(value);
  return OBS(value == kMissing ? std::string() : GetStrings(variable).Decode(value));
}

}  // namespace BayesHost
