#include <gtest/gtest.h>

#include <QByteArray>
#include <algorithm>
#include <array>
#include <string>

#include "companion/Joint.h"
#include "companion/PseudoTerminal.h"

namespace quoll {
namespace {

using Record = std::array<uint8_t, kSerialMapSize>;

// A port with a given number of bytes to read, that takes so many bytes and no more.
class FakePort : public QIODevice {
 public:
  FakePort() { open(QIODevice::ReadWrite | QIODevice::Unbuffered); }
  bool isSequential() const override { return true; }
  qint64 bytesToWrite() const override { return busy; }

  QByteArray toRead;
  QByteArray written;
  qint64 room = 1'000'000;
  qint64 busy = 0;
  bool broken = false;

 protected:
  qint64 readData(char* data, qint64 most) override {
    if (broken) return -1;
    const auto size = std::min<qint64>(most, toRead.size());
    std::copy_n(toRead.begin(), size, data);
    toRead.remove(0, size);
    return size;
  }
  qint64 writeData(const char* data, qint64 size) override {
    if (broken) return -1;
    const qint64 taken = std::min(size, room);
    written.append(data, taken);
    room -= taken;
    return taken;
  }
};

QByteArray Counting(int size) {
  QByteArray bytes;
  for (int i = 0; i < size; ++i) bytes.append(static_cast<char>(i % 253));
  return bytes;
}

void PutForCompanion(Record& record, const QByteArray& bytes) {
  std::copy(bytes.begin(), bytes.end(), record.begin() + kToCompanion.data);
  record[kToCompanion.count] = static_cast<uint8_t>(bytes.size());
}

TEST(Joint, NothingMovesNothing) {
  Joint joint;
  Record record{};
  FakePort port;
  EXPECT_FALSE(JointMove(joint, SerialView(record), &port));
  EXPECT_EQ(record, Record{});
}

TEST(Joint, BothWaysAtOnce) {
  Joint joint;
  Record record{};
  FakePort port;
  PutForCompanion(record, QByteArray("\0ab", 3));
  port.toRead = QByteArray("x\0", 2);
  EXPECT_TRUE(JointMove(joint, SerialView(record), &port));
  EXPECT_EQ(port.written, QByteArray("\0ab", 3));
  EXPECT_EQ(record[kToCompanion.count], 0);
  EXPECT_EQ(record[kToMachine.count], 2);
  EXPECT_EQ(record[0], 'x');
  EXPECT_EQ(joint.bytesToMachine, 2U);
  EXPECT_EQ(joint.bytesFromMachine, 3U);
}

TEST(Joint, MachineThatDoesNotTakeStopsTheReading) {
  Joint joint;
  Record record{};
  FakePort port;
  port.toRead = Counting(5000);
  JointMove(joint, SerialView(record), &port);
  for (int i = 0; i < 10; ++i) JointMove(joint, SerialView(record), &port);
  EXPECT_EQ(record[kToMachine.count], 255);
  EXPECT_EQ(joint.toMachine.size(), 1024U);
  EXPECT_EQ(port.toRead.size(), 5000 - 255 - 1024);

  QByteArray got;
  for (int i = 0; i < 100; ++i) {
    got.append(reinterpret_cast<const char*>(record.data()), record[kToMachine.count]);
    record[kToMachine.count] = 0;
    JointMove(joint, SerialView(record), &port);
  }
  EXPECT_EQ(got, Counting(5000));
  EXPECT_EQ(joint.bytesToMachine, 5000U);
}

TEST(Joint, PortThatTakesAPartGetsTheRestLater) {
  Joint joint;
  Record record{};
  FakePort port;
  port.room = 100;
  PutForCompanion(record, Counting(255));
  JointMove(joint, SerialView(record), &port);
  PutForCompanion(record, QByteArray("next"));
  EXPECT_FALSE(JointMove(joint, SerialView(record), &port));
  EXPECT_EQ(record[kToCompanion.count], 4);  // stays there: a killed companion would lose it
  EXPECT_EQ(joint.fromMachine.size(), 155U);
  port.room = 1000;
  JointMove(joint, SerialView(record), &port);
  JointMove(joint, SerialView(record), &port);
  EXPECT_EQ(port.written, Counting(255) + "next");
}

TEST(Joint, PortThatStillSendsIsLeftInPeace) {
  Joint joint;
  Record record{};
  FakePort port;
  port.busy = 1;
  PutForCompanion(record, QByteArray("later"));
  EXPECT_FALSE(JointMove(joint, SerialView(record), &port));
  EXPECT_EQ(record[kToCompanion.count], 5);
  port.busy = 0;
  EXPECT_TRUE(JointMove(joint, SerialView(record), &port));
  EXPECT_EQ(port.written, "later");
}

TEST(Joint, WithoutAPortTheMachineStillGetsWhatWasRead) {
  Joint joint;
  Record record{};
  joint.toMachine = {1, 2, 3};
  PutForCompanion(record, QByteArray("stays"));
  EXPECT_TRUE(JointMove(joint, SerialView(record), nullptr));
  EXPECT_EQ(record[kToMachine.count], 3);
  EXPECT_EQ(record[kToCompanion.count], 5);
  EXPECT_FALSE(JointMove(joint, SerialView(record), nullptr));
}

TEST(Joint, BrokenPortKeepsTheBytes) {
  Joint joint;
  Record record{};
  FakePort port;
  port.broken = true;
  PutForCompanion(record, QByteArray("keep"));
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(JointMove(joint, SerialView(record), &port));
  port.broken = false;
  JointMove(joint, SerialView(record), &port);
  EXPECT_EQ(port.written, "keep");
}

}  // namespace
}  // namespace quoll
