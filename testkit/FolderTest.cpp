#include "testkit/FolderTest.h"

#include "machine/MachineInit.h"

namespace quoll::test {

FolderTest::FolderTest() {
  m.programFolder = folder.string();
  MachineReset(m);
}
FolderTest::~FolderTest() = default;

std::string FolderTest::Path(const std::string& name) const { return temporary.Path(name); }
std::vector<std::string> FolderTest::Names() const { return NamesIn(folder); }

void FolderTest::ExpectBox(const std::string& file, const std::string& reason) const {
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].text, file + ": " + reason);
  EXPECT_EQ(host.messages[0].title, "Error");
}

}  // namespace quoll::test
