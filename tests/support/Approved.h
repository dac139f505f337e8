// Output compared with a file that a person has read and approved.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

// `name`: a file under tests/data. With BAYES_APPROVE set the file is rewritten, and its change shows in the
// next diff.
inline void ExpectApproved(const std::string& name, const std::string& actual) {
  const std::string path = std::string(TEST_DATA_DIR) + "/" + name;
  if (std::getenv("BAYES_APPROVE") != nullptr) std::ofstream(path, std::ios::binary) << actual;
  std::ifstream file(path, std::ios::binary);
  std::ostringstream approved;
  approved << file.rdbuf();
  EXPECT_TRUE(file) << path << " is missing";
  EXPECT_EQ(approved.str(), actual) << "differs from " << path;
}
