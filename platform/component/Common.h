// What host, module and component share: the missing value, records, statuses, progress, cancellation,
// threads. Header only, so that a host and a component built apart from each other agree on it.
#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "platform/Visibility.h"

namespace MCCommon_850 {

// The double that stands for "not given" in settings and for "missing" in records and results: the most
// negative finite double, compared by equality.
struct BAYES_PLATFORM MCMV {
  static constexpr double Missing() { return std::numeric_limits<double>::lowest(); }
};

// One case: a row of GetRecordSize() doubles in the order of the record slots.
struct Record {
  const double* fValues = nullptr;
};

// The records of one split, in a fixed order, readable as often as wanted. Not thread-safe.
class BAYES_PLATFORM MCRecordSource {
 public:
  virtual ~MCRecordSource() = default;
  virtual int GetRecordSize() const = 0;
  // Back to the first record.
  virtual void Restart() = 0;
  // The next `count` records, row by row; null (and count 0) at the end. Valid until the next call.
  virtual const double* NextBlock(std::size_t& count) = 0;
};

// A code with a severity and up to two integers whose meaning depends on the code.
class BAYES_PLATFORM MCStatus {
 public:
  enum class Severity { OK, Warning, Error };

  MCStatus() = default;
  MCStatus(int code, Severity severity, int datum0 = 0, int datum1 = 0)
      : fCode(code), fSeverity(severity), fData{datum0, datum1} {}

  int GetCode() const { return fCode; }
  Severity GetSeverity() const { return fSeverity; }
  // i is 0 or 1.
  int GetDatum(int i) const { return fData[i]; }
  bool IsOK() const { return fSeverity == Severity::OK; }
  bool IsWarning() const { return fSeverity == Severity::Warning; }
  bool IsError() const { return fSeverity == Severity::Error; }

 private:
  int fCode = 0;
  Severity fSeverity = Severity::OK;
  int fData[2] = {0, 0};
};

// The statuses collected while a model was built, errors included, in the order they arose.
class BAYES_PLATFORM MCWarnings {
 public:
  void Add(const MCStatus& status) { fvStatuses.push_back(status); }
  // `inOrder` is reserved; pass true.
  const std::vector<MCStatus>& GetWarnings(bool /*inOrder*/) const { return fvStatuses; }

 private:
  std::vector<MCStatus> fvStatuses;
};

class BAYES_PLATFORM ProgressReport {
 public:
  void SetCount(const std::string& key, int count) {
    fKey = key;
    fCount = count;
  }
  // The count reported under a key ("records": cases read so far), 0 when there is none.
  int GetCount(const std::string& key) const { return key == fKey ? fCount : 0; }

 private:
  std::string fKey;
  int fCount = 0;
};

// Called now and then while a model is built, on the thread that called BuildModel.
class BAYES_PLATFORM ProgressListener {
 public:
  virtual ~ProgressListener() = default;
  virtual void ReportProgress(ProgressReport& report) = 0;
};

// Asked now and then, from any thread.
class BAYES_PLATFORM MCCancelQuery {
 public:
  virtual ~MCCancelQuery() = default;
  virtual bool IsCancelled() const = 0;
};

// Runs independent tasks, in any order, on up to `maxThreads` threads (0: the factory chooses); returns when
// all are done. The first exception of a task is thrown again then.
class BAYES_PLATFORM MCThreadFactory {
 public:
  virtual ~MCThreadFactory() = default;
  virtual void ForEach(int count, int maxThreads, const std::function<void(int)>& task) = 0;
};

// The application as the header of an exported document names it.
struct BAYES_PLATFORM MCApplicInfo4XML {
  std::string fName;
  std::string fVersion;
  std::string fDescription;
};

class BAYES_PLATFORM MCTempFileNameMaker {
 public:
  virtual ~MCTempFileNameMaker() = default;
  // Empty when no temporary file can be made.
  virtual std::string GetName() = 0;
};

}  // namespace MCCommon_850
