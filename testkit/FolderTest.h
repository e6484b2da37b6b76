// A machine in an empty folder, which is the working directory and the program folder while the test runs.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "machine/MachineInit.h"
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

  FolderTest() {
    m.programFolder = folder.string();
    MachineReset(m);
  }

  std::string Path(const std::string& name) const { return temporary.Path(name); }
  std::vector<std::string> Names() const { return NamesIn(folder); }

  // The one box shown so far names the file and the reason.
  void ExpectBox(const std::string& file, const std::string& reason) const {
    ASSERT_EQ(host.messages.size(), 1U);
    EXPECT_EQ(host.messages[0].text, file + ": " + reason);
    EXPECT_EQ(host.messages[0].title, "Error");
  }
};

}  // namespace quoll::test
