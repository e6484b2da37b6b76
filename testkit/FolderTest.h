// A machine in an empty folder, which is the working directory and the program folder while the test runs.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "testkit/BadDisk.h"
#include "testkit/Files.h"
#include "testkit/TestMachine.h"

namespace quoll::test {

struct FolderTest : testing::Test {
  TempFolder temporary;
  WorkingIn working{temporary.path};
  const std::filesystem::path& folder = temporary.path;
  TestMachine machine;
  TestHost& host = machine.host;
  Machine& m = *machine;

  FolderTest();
  ~FolderTest() override;

  std::string Path(const std::string& name) const;
  std::vector<std::string> Names() const;

  // The one box shown so far names the file and the reason.
  void ExpectBox(const std::string& file, const std::string& reason) const;
};

}  // namespace quoll::test
