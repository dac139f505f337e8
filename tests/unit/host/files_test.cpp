#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include "host/files/OutputFile.h"
#include "host/files/TempFile.h"
#include "host/files/TempNames.h"
#include "platform/host/Files.h"
#include "support/TempData.h"

namespace BayesHost {
namespace {

std::string Slurp(const std::filesystem::path& path) {
  std::ifstream stream(path);
  return {std::istreambuf_iterator<char>(stream), {}};
}

auto CountFiles(const std::filesystem::path& folder) {
  return std::distance(std::filesystem::directory_iterator(folder), {});
}

TEST(OutputFile, AppearsWholeOrNotAtAll) {
  const TempData temp("old");
  {
    OutputFile dropped(temp.GetFile().fPath);
    dropped.Stream() << "new";
  }
  EXPECT_EQ(Slurp(temp.GetFile().fPath), "old");
  OutputFile kept(temp.GetFile().fPath);
  kept.Stream() << "new";
  EXPECT_EQ(Slurp(temp.GetFile().fPath), "old") << "nothing before Commit";
  kept.Commit();
  EXPECT_EQ(Slurp(temp.GetFile().fPath), "new");
  EXPECT_EQ(CountFiles(temp.GetFolder()), 1) << "no temporary file is left";
}

TEST(OutputFile, NamesTheTargetThatCannotBeWritten) {
  const TempData temp("");
  const std::filesystem::path target = temp.GetFolder() / "no folder" / "out.html";
  try {
    OutputFile file(target);
    FAIL() << "opened";
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
    EXPECT_NE(std::string(error.what()).find("out.html"), std::string::npos);
  }
  OutputFile full("/dev/full");
  full.Stream() << "text";
  EXPECT_THROW(full.Commit(), std::system_error);
  EXPECT_TRUE(std::filesystem::exists("/dev/full"));
}

TEST(TempNames, AreNewAndGoWithTheirOwner) {
  std::string first;
  {
    TempNames names;
    first = names.Make("bys_");
    EXPECT_NE(first, names.Make("bys_"));
    EXPECT_EQ(std::filesystem::path(first).filename().string().rfind("bys_", 0), 0U);
    EXPECT_TRUE(std::filesystem::exists(first));
  }
  EXPECT_FALSE(std::filesystem::exists(first));
  EXPECT_EQ(TempNames().Make("no such folder/x"), "");
}

TEST(TempNames, AnswerTheModule) {
  std::string name;
  EXPECT_TRUE(FormTempName("bys_", name));
  EXPECT_TRUE(std::filesystem::exists(name));
  EXPECT_FALSE(FormTempName("no such folder/x", name));
}

TEST(TempFile, GivesBackWhatWasWrittenAnywhere) {
  TempFile file;
  file.Write(5, "world", 5);
  file.Write(0, "hello", 5);
  char text[10];
  file.Read(0, text, 10);
  EXPECT_EQ(std::string(text, 10), "helloworld");
  EXPECT_THROW(file.Read(5, text, 10), std::system_error) << "behind the end";
}

}  // namespace
}  // namespace BayesHost
