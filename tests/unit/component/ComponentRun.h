// Runs a component on columns of numbers, and reads the reference cases that say what should come out.
#pragma once

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "gtest/gtest.h"
#include "platform/component/Component.h"

namespace BayesTest {

using MCBSN_850::BSNSettings;
using json = nlohmann::ordered_json;

constexpr double kMissing = MCCommon_850::MCMV::Missing();

using Column = std::vector<double>;

// Columns as records, handed out in blocks of three so that every test crosses block borders.
class ColumnRecords : public MCCommon_850::MCRecordSource {
 public:
  explicit ColumnRecords(const std::vector<Column>& columns) : fSize(columns.size()) {
    for (std::size_t i = 0; i < columns.at(0).size(); ++i) {
      for (const Column& column : columns) fvValues.push_back(column.at(i));
    }
  }
  int GetRecordSize() const override { return static_cast<int>(fSize); }
  void Restart() override { fNext = 0; }
  const double* NextBlock(std::size_t& count) override {
    count = std::min<std::size_t>(3, fvValues.size() / fSize - fNext);
    const double* block = count == 0 ? nullptr : fvValues.data() + fNext * fSize;
    fNext += count;
    return block;
  }

 private:
  std::size_t fSize;
  std::vector<double> fvValues;
  std::size_t fNext = 0;
};

// Hands the tasks to three threads, the last first.
class ReversedThreads : public MCCommon_850::MCThreadFactory {
 public:
  void ForEach(int count, int /*maxThreads*/, const std::function<void(int)>& task) override {
    std::vector<std::jthread> threads;
    for (int first = 0; first < 3; ++first) {
      threads.emplace_back([=, &task] {
        for (int i = count - 1 - first; i >= 0; i -= 3) task(i);
      });
    }
  }
};

// A model that was built, with its record and its statuses.
template <class Stats>
class Model {
 public:
  Model(const BSNSettings& settings, const std::vector<Column>& columns) : fComponent(settings, fVariables) {
    ColumnRecords records(columns);
    fStatus = fComponent.BuildModel(records);
  }
  // Fails the test when the record is of another kind.
  const Stats& Record() {
    const auto* stats = dynamic_cast<const Stats*>(fComponent.GetOutputStats());
    if (!stats) throw std::logic_error("not the record of this analysis");
    return *stats;
  }
  const std::vector<MCCommon_850::MCStatus>& Statuses() const {
    return fComponent.GetWarningMessages()->GetWarnings(true);
  }
  std::vector<int> Codes() const {
    std::vector<int> codes;
    for (const auto& status : Statuses()) codes.push_back(status.GetCode());
    return codes;
  }
  const MCCommon_850::MCStatus& Status() const { return fStatus; }

 private:
  MCXML_850::MCVarList fVariables;
  MCBSN_850::BSNComponent fComponent;
  MCCommon_850::MCStatus fStatus;
};

inline json ReferenceCases(const std::string& name) {
  std::ifstream file(std::string(TEST_DATA_DIR) + "/reference/" + name + ".json");
  const json cases = json::parse(file).at("cases");
  EXPECT_FALSE(cases.empty()) << name;
  return cases;
}

inline double NumberOrMissing(const json& value) {
  return value.is_null() ? kMissing : value.get<double>();
}

inline Column ColumnOf(const json& values) {
  Column column;
  std::transform(values.begin(), values.end(), std::back_inserter(column), NumberOrMissing);
  return column;
}

// Null means missing, and only missing; a 0 is exact. Otherwise within `allowed` of the expected number.
inline void ExpectNear(const std::string& what, double actual, const json& expected, double allowed) {
  if (expected.is_null() || expected == 0) allowed = 0;
  const double wanted = NumberOrMissing(expected);
  EXPECT_TRUE(std::abs(actual - wanted) <= allowed)
      << what << ": " << actual << " instead of " << wanted << ", off by " << actual - wanted;
}

// What came out for one test, by the names of the reference cases.
struct Outcome {
  std::map<std::string, double> fStats;
  double fLnBF = kMissing;
  std::map<std::string, double> fPosterior;
  std::vector<int> fvCodes;
};

// ln of a record's Bayes factor.
inline double LogOf(double bayesFactor, bool isLog = false) {
  return isLog || bayesFactor == kMissing ? bayesFactor : std::log(bayesFactor);
}

template <class Record>
std::map<std::string, double> PosteriorOf(const Record& record, const std::vector<double>& means) {
  return {{"mode", record.GetModeValues().at(0)},
          {"mean", means.at(0)},
          {"variance", record.GetVarianceValues().at(0)},
          {"lower", record.GetLowerLimits().at(0)},
          {"upper", record.GetUpperLimits().at(0)}};
}

// Everything that a case expects, each number in the way its file's "about" says: lnBF absolutely from 1
// downwards, posterior locations relative to the posterior's standard deviation, the rest relative. A case
// whose numbers lose digits has tolerances of its own.
inline void ExpectOutcome(const json& expect, const Outcome& outcome) {
  const double tolerance = expect.at("tolerance");
  const json own = expect.value("tolerances", json::object());
  if (expect.contains("lnBF")) {
    const double size = std::max(1.0, std::abs(NumberOrMissing(expect["lnBF"])));
    ExpectNear("lnBF", outcome.fLnBF, expect["lnBF"], own.value("lnBF", tolerance) * size);
  }
  const json stats = expect.value("stats", json::object());
  for (const auto& [name, wanted] : stats.items()) {
    const double size = std::abs(NumberOrMissing(wanted));
    ExpectNear(name, outcome.fStats.at(name), wanted, own.value(name, tolerance) * size);
  }
  const json posterior = expect.value("posterior", json::object());
  const json variance = posterior.value("variance", json());
  for (const auto& [name, wanted] : posterior.items()) {
    const double value = std::abs(NumberOrMissing(wanted));
    const double sd = variance.is_null() ? 0 : std::sqrt(variance.get<double>());
    double allowed = tolerance * (name == "variance" ? value : std::max(value, sd));
    if (name != "variance") allowed = own.value("posterior location, absolute", allowed);
    ExpectNear("posterior " + name, outcome.fPosterior.at(name), wanted, allowed);
  }
  EXPECT_EQ(outcome.fvCodes, expect.value("status", std::vector<int>()));
}

}  // namespace BayesTest
