// The third pass over the cases, in which they take values.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "host/data/DataSet.h"
#include "host/output/CommandOutput.h"
#include "host/session/Session.h"
#include "platform/host/Adapter.h"
#include "support/TempData.h"

namespace BayesHost {
namespace {

using testing::ElementsAre;

constexpr double M = MCCommon_850::MCMV::Missing();

// y may lack in the last pass, x never; g is coded.
class Scoring : public testing::Test {
 protected:
  void Open(const std::string& text) {
    fpFile = std::make_unique<TempData>(text);
    fSession.SetData(std::make_shared<DataSet>(fpFile->GetFile(), DataSet::Limits{}));
    fSession.BeginCommand({}, std::make_shared<CommandOutput>("BAYES REGRESSION", "", 1));
    fSpecs.AddVariable(0, false, false, true, true);
    fSpecs.AddVariable(1, false, false, true, false);
    fSpecs.AddVariable(2, true, false, true, false);
  }

  // Reads a pass to its end; in the scoring pass each case takes its code plus x/100.
  void Pass(ACAProcDataSourceIter& iter, ACAInputAdapter& adapter) {
    fRecords = 0;
    while (iter.NewSplit()) {
      for (; iter.HasRecord() && fRecords < fMostRecords; iter.Advance(), ++fRecords) {
        const double* record = iter.Current()->fValues;
        if (ZARQ_InputCaseIterator* cases = iter.GetProcDS()) {
          cases->SetColumnValue(4, record[2] + record[1] / 100);
        }
      }
      if (adapter.GetCurrentPass() == 0) adapter.ReorderRecordCats(2, true);
      if (fRecords >= fMostRecords) fSession.Interrupt();
    }
  }

  std::vector<double> Score() {
    ACAInputAdapter adapter(fSpecs, fSource);
    ACAProcDataSourceIter iter(adapter, true);
    EXPECT_EQ(iter.GetProcDS(), nullptr);
    Pass(iter, adapter);
    iter.Restart();
    Pass(iter, adapter);
    fFitted = fRecords;
    unsigned column = 0;
    fSource.MakeVariable(0, &column);
    iter.NewPass(true);
    EXPECT_EQ(adapter.GetCurrentPass(), 2);
    iter.SetLastPass();
    fMostRecords = fMostScored;
    Pass(iter, adapter);
    return ReadSaved();
  }

  std::vector<double> ReadSaved() {
    DataSet& data = *fSession.GetData();
    data.Require({4});
    data.Load();
    CaseCursor cursor = data.MakeFileCursor({4});
    cursor.SetRange(0, data.CountCases());
    std::vector<double> values;
    while (cursor.Next()) values.push_back(cursor.GetValues()[0]);
    return values;
  }

  static constexpr int kAll = 1000;
  std::unique_ptr<TempData> fpFile;
  Session fSession{RunOptions{}};
  Session::Use fUse{fSession};
  ProcedureDataSource fSource;
  ACAVarValidSpecs fSpecs{true, true, true};
  int fRecords = 0;
  int fFitted = 0;
  int fMostRecords = kAll;
  int fMostScored = kAll;
};

constexpr const char* kData =
    "y,x,g,s\n"
    "1,1,b,2\n"
    ",2,a,1\n"   // lacks the response only
    "3,,a,1\n"   // lacks a predictor
    "4,4,a,2\n"  // a is the first level of split 2, b the second
    ",5,c,1\n"   // a level without a response in its split
    "6,6,a,1\n"
    "7,7,b,1\n";

TEST_F(Scoring, CasesThatLackOnlyTheResponseTakeValuesToo) {
  Open(kData);
  EXPECT_THAT(Score(), ElementsAre(1.01, 0.02, M, 0.04, -0.95, 0.06, 1.07));
  EXPECT_EQ(fFitted, 4);
}

TEST_F(Scoring, SplitsLeaveTheOrderOfTheFile) {
  Open(kData);
  fSession.GetData()->SetSplit({3});
  EXPECT_THAT(Score(), ElementsAre(1.01, 0.02, M, 0.04, -0.95, 0.06, 1.07));
}

TEST_F(Scoring, AnInterruptedPassGivesNoValues) {
  Open(kData);
  fMostScored = 2;
  EXPECT_THAT(Score(), ElementsAre(M, M, M, M, M, M, M));
}

}  // namespace
}  // namespace BayesHost
