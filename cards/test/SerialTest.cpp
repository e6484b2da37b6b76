#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

#include "cards/Serial.h"

namespace quoll {
namespace {

using Record = std::array<uint8_t, kSerialMapSize>;
using Bytes = std::vector<uint8_t>;

Bytes Contents(const SerialQueue& queue) { return {queue.begin(), queue.end()}; }

Bytes Counting(size_t size, int first = 0) {
  Bytes bytes(size);
  for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<uint8_t>(first + static_cast<int>(i % 251));
  return bytes;
}

SerialQueue Queue(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

TEST(SerialPorts, WritesQueueInOrder) {
  Serial serial;
  for (int byte = 0; byte < 256; ++byte) SerialWrite(serial, static_cast<uint8_t>(byte));
  Bytes all(256);
  std::iota(all.begin(), all.end(), uint8_t{0});
  EXPECT_EQ(Contents(serial.SerialTx), all);
  EXPECT_TRUE(serial.SerialRx.empty());
}

TEST(SerialPorts, ReadsShortenTheQueueAndZeroIsAByte) {
  Serial serial;
  EXPECT_EQ(SerialStatus(serial), 0);
  EXPECT_EQ(SerialRead(serial), 0);
  serial.SerialRx = {0, 0xFF, 0};
  for (const uint8_t byte : Bytes{0, 0xFF, 0}) {
    EXPECT_EQ(SerialStatus(serial), 0xFF);
    EXPECT_EQ(SerialRead(serial), byte);
  }
  EXPECT_EQ(SerialStatus(serial), 0);
  EXPECT_EQ(SerialRead(serial), 0);
}

TEST(SerialPorts, ButtonsQueueTheirBytes) {
  Serial serial;
  SerialWrite(serial, 9);
  SerialSend(serial, Bytes{0, 1, 255});
  SerialSend(serial, {});
  EXPECT_EQ(Contents(serial.SerialTx), (Bytes{9, 0, 1, 255}));
}

TEST(SerialMapTest, OffsetsOfTheRecord) {
  EXPECT_EQ(kToMachine.data, 0U);
  EXPECT_EQ(kToCompanion.data, 256U);
  EXPECT_EQ(kToMachine.count, 512U);
  EXPECT_EQ(kToCompanion.count, 513U);
  EXPECT_EQ(kSerialMapSize, 535U);
}

// A lane is filled and taken in all lengths, and no byte beside it changes.
TEST(SerialMapTest, EveryLengthGoesThrough) {
  for (const SerialLane lane : {kToMachine, kToCompanion}) {
    for (size_t length = 0; length <= 255; ++length) {
      Record record;
      record.fill(0x5A);
      record[lane.count] = 0;
      Record expected = record;
      const Bytes bytes = Counting(length, 3);
      std::copy(bytes.begin(), bytes.end(), expected.begin() + static_cast<ptrdiff_t>(lane.data));
      expected[lane.count] = static_cast<uint8_t>(length);
      SerialQueue queue = Queue(bytes);
      EXPECT_EQ(FillLane(SerialView(record), lane, queue), length);
      EXPECT_TRUE(queue.empty());
      EXPECT_EQ(record, expected);

      expected[lane.count] = 0;
      queue = {7};
      EXPECT_EQ(TakeLane(SerialView(record), lane, queue), length);
      EXPECT_EQ(Bytes(queue.begin() + 1, queue.end()), bytes);
      EXPECT_EQ(queue.front(), 7);
      EXPECT_EQ(record, expected);
    }
  }
}

TEST(SerialMapTest, AFullLaneIsLeftAlone) {
  for (int count = 1; count < 256; ++count) {
    Record record;
    record.fill(0x11);
    record[kToCompanion.count] = static_cast<uint8_t>(count);
    const Record before = record;
    SerialQueue queue = {1, 2, 3};
    EXPECT_EQ(FillLane(SerialView(record), kToCompanion, queue), 0U);
    EXPECT_EQ(queue.size(), 3U);
    EXPECT_EQ(record, before);
  }
}

TEST(SerialMapTest, LineGoesThroughTheLast21Bytes) {
  Record record;
  record.fill(0x77);
  record[514] = 0;
  const SerialLine line{true, 0x01C20003, 7, Parity::Odd, 3};
  TellLine(SerialView(record), line);
  EXPECT_EQ(ReadLine(SerialView(record)), line);
  EXPECT_TRUE(std::all_of(record.begin(), record.begin() + 514, [](uint8_t byte) { return byte == 0x77; }));
  EXPECT_EQ(Bytes(record.begin() + 514, record.begin() + 522), (Bytes{1, 3, 0, 0xC2, 1, 7, 2, 3}));
  TellLine(SerialView(record), {});
  EXPECT_EQ(ReadLine(SerialView(record)), SerialLine{});
}

TEST(SerialMapTest, WildLinesReadAsNothing) {
  for (int value = 0; value < 256; ++value) {
    Record record;
    record.fill(static_cast<uint8_t>(value));
    const SerialLine line = ReadLine(SerialView(record));
    EXPECT_EQ(line.open, value == 1);
    EXPECT_EQ(line.dataBits, value >= 5 && value <= 8 ? value : 0);
    EXPECT_EQ(static_cast<int>(line.parity), value <= 4 ? value : 0);
    EXPECT_EQ(line.halfStopBits, value >= 2 && value <= 4 ? value : 0);
  }
}

TEST(SerialExchange, NothingToDoChangesNothing) {
  Serial serial;
  Record record{};
  const SerialExchanged done = SerialExchange(serial, SerialView(record));
  EXPECT_FALSE(done.received);
  EXPECT_FALSE(done.underrun);
  EXPECT_EQ(serial, Serial{});
  EXPECT_EQ(record, Record{});
}

TEST(SerialExchange, BothDirectionsInOneGo) {
  Serial serial;
  serial.SerialTx = {1, 0, 2};
  serial.SerialRx = {5};
  Record record{};
  record[0] = 0;
  record[1] = 9;
  record[512] = 2;
  record[530] = 0xEE;  // the companion's own
  const SerialExchanged done = SerialExchange(serial, SerialView(record));
  EXPECT_TRUE(done.received);
  EXPECT_FALSE(done.underrun);
  EXPECT_EQ(Contents(serial.SerialRx), (Bytes{5, 0, 9}));
  EXPECT_TRUE(serial.SerialTx.empty());
  Record expected{};
  expected[1] = 9;
  expected[256] = 1;
  expected[258] = 2;
  expected[513] = 3;
  expected[530] = 0xEE;
  EXPECT_EQ(record, expected);
}

TEST(SerialExchange, WaitsUntilTheCompanionHasTaken) {
  Serial serial;
  serial.SerialTx = {1};
  Record record{};
  SerialExchange(serial, SerialView(record));
  SerialWrite(serial, 2);
  SerialWrite(serial, 3);
  SerialExchange(serial, SerialView(record));
  EXPECT_EQ(record[256], 1);
  EXPECT_EQ(record[513], 1);
  EXPECT_EQ(Contents(serial.SerialTx), (Bytes{2, 3}));
  record[513] = 0;
  SerialExchange(serial, SerialView(record));
  EXPECT_EQ(record[256], 2);
  EXPECT_EQ(record[257], 3);
  EXPECT_EQ(record[513], 2);
}

struct LimitRow {
  size_t queued, handedOver;
  bool told;
};
class SerialLimit : public testing::TestWithParam<LimitRow> {};

TEST_P(SerialLimit, QueueAbove255IsToldAndKept) {
  const LimitRow row = GetParam();
  Serial serial;
  const Bytes bytes = Counting(row.queued, 1);
  serial.SerialTx = Queue(bytes);
  Record record{};
  EXPECT_EQ(SerialExchange(serial, SerialView(record)).underrun, row.told);
  EXPECT_EQ(record[513], row.handedOver);
  EXPECT_EQ(Contents(serial.SerialTx),
            Bytes(bytes.begin() + static_cast<ptrdiff_t>(row.handedOver), bytes.end()));
}
INSTANTIATE_TEST_SUITE_P(Rows, SerialLimit,
                         testing::Values(LimitRow{1, 1, false}, LimitRow{254, 254, false},
                                         LimitRow{255, 255, false}, LimitRow{256, 255, true},
                                         LimitRow{257, 255, true}, LimitRow{1000, 255, true}));

TEST(SerialExchange, UnderrunIsToldOnceUntilTheQueueIsEmpty) {
  EXPECT_EQ(kSerialUnderrun, "Buffer underrun TX!");
  Serial serial;
  Record record{};
  const Bytes bytes = Counting(1000);
  for (int round = 0; round < 2; ++round) {
    SerialSend(serial, bytes);
    Bytes taken;
    int told = 0;
    for (int exchange = 0; exchange < 4; ++exchange) {
      if (SerialExchange(serial, SerialView(record)).underrun) ++told;
      taken.insert(taken.end(), record.begin() + 256, record.begin() + 256 + record[513]);
      record[513] = 0;
    }
    EXPECT_EQ(told, 1);
    EXPECT_EQ(taken, bytes);
    EXPECT_TRUE(serial.SerialTx.empty());
  }
}

TEST(SerialExchange, UnderrunIsNotToldWhileTheLaneIsFull) {
  Serial serial;
  SerialSend(serial, Counting(300));
  Record record{};
  record[513] = 1;
  EXPECT_FALSE(SerialExchange(serial, SerialView(record)).underrun);
  EXPECT_EQ(serial.SerialTx.size(), 300U);
  record[513] = 0;
  EXPECT_TRUE(SerialExchange(serial, SerialView(record)).underrun);
}

TEST(SerialExchange, AnyReceiveCountStaysWithinTheBuffer) {
  for (int count = 0; count < 256; ++count) {
    Serial serial;
    Record record{};
    for (size_t i = 0; i < 512; ++i) record[i] = static_cast<uint8_t>(i < 256 ? i : 0xEE);
    record[512] = static_cast<uint8_t>(count);
    EXPECT_EQ(SerialExchange(serial, SerialView(record)).received, count != 0);
    ASSERT_EQ(serial.SerialRx.size(), static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) EXPECT_EQ(serial.SerialRx[static_cast<size_t>(i)], i);
    EXPECT_EQ(record[512], 0);
  }
}

TEST(SerialExchange, AMachineThatNeverReadsMakesTheCompanionWait) {
  Serial serial;
  serial.SerialRx.resize(kMostReceived - 1);
  Record record{};
  record[512] = 255;
  EXPECT_TRUE(SerialExchange(serial, SerialView(record)).received);
  record[512] = 255;
  EXPECT_FALSE(SerialExchange(serial, SerialView(record)).received);
  EXPECT_EQ(serial.SerialRx.size(), kMostReceived + 254);
  EXPECT_EQ(record[512], 255);
  serial.SerialRx.clear();
  EXPECT_TRUE(SerialExchange(serial, SerialView(record)).received);
}

TEST(SerialExchange, RemembersTheLine) {
  Serial serial;
  Record record{};
  const SerialLine line{true, 9600, 8, Parity::None, 2};
  TellLine(SerialView(record), line);
  SerialExchange(serial, SerialView(record));
  EXPECT_EQ(serial.line, line);
}

// The companion's side in a thread of its own: all bytes come over, in order, both ways at once.
TEST(SerialExchange, BothSidesAtFullSpeedLoseNothing) {
  constexpr size_t kLength = 100'000;
  Record record{};
  const Bytes out = Counting(kLength, 1);
  const Bytes in = Counting(kLength, 77);
  SerialQueue companionGot;
  std::thread companion([&] {
    SerialQueue toMachine = Queue(in);
    while (companionGot.size() < kLength || !toMachine.empty()) {
      size_t moved = TakeLane(SerialView(record), kToCompanion, companionGot);
      moved += FillLane(SerialView(record), kToMachine, toMachine);
      if (moved == 0) std::this_thread::yield();
    }
  });
  Serial serial;
  SerialSend(serial, out);
  int told = 0;
  while (serial.SerialRx.size() < kLength || !serial.SerialTx.empty()) {
    const SerialExchanged done = SerialExchange(serial, SerialView(record));
    if (done.underrun) ++told;
    if (!done.received) std::this_thread::yield();
  }
  companion.join();
  EXPECT_EQ(Contents(companionGot), out);
  EXPECT_EQ(Contents(serial.SerialRx), in);
  EXPECT_EQ(told, 1);
}

// A mad program on the other side: every exchange ends, with no more than the record can hold.
TEST(SerialExchange, RecordThatChangesMeanwhile) {
  Record record{};
  std::atomic<bool> done{false};
  std::thread mad([&] {
    uint32_t random = 1;
    while (!done) {
      random = random * 1664525 + 1013904223;
      std::atomic_ref(record[(random >> 8) % kSerialMapSize]).store(static_cast<uint8_t>(random >> 24));
    }
  });
  Serial serial;
  for (int exchange = 0; exchange < 20'000; ++exchange) {
    SerialSend(serial, Bytes{1, 2, 3});
    const size_t before = serial.SerialRx.size();
    SerialExchange(serial, SerialView(record));
    ASSERT_LE(serial.SerialRx.size() - before, 255U);
    serial.SerialRx.clear();
  }
  done = true;
  mad.join();
}

TEST(SerialText, UnprintableOnesAreDots) {
  EXPECT_EQ(SerialText({}), "");
  for (int byte = 0; byte < 256; ++byte) {
    const char shown = byte >= 32 && byte <= 126 ? static_cast<char>(byte) : '.';
    EXPECT_EQ(SerialText({static_cast<uint8_t>(byte)}), std::string(1, shown));
  }
  EXPECT_EQ(SerialText({'O', 'K', 13, 10, 0, '!'}), "OK...!");
}

TEST(SerialText, LongQueuesShowTheirEnd) {
  const SerialQueue queue = {'a', 'b', 'c', 'd'};
  EXPECT_EQ(SerialText(queue, 3), "bcd");
  EXPECT_EQ(SerialText(queue, 4), "abcd");
  EXPECT_EQ(SerialText(queue, 5), "abcd");
  EXPECT_EQ(SerialText(queue, 0), "");
  EXPECT_EQ(SerialText(SerialQueue(5000, 'x')).size(), 4096U);
}

// The last byte is the exclusive-or of the seven before it: A0 ^ 01 ^ AF is 0E.
TEST(PelcoP, FramesOfTheButtons) {
  struct Row {
    CameraMove move;
    std::array<uint8_t, 8> frame;
  };
  for (const Row& row : {Row{CameraMove::Stop, {0xA0, 1, 0, 0x00, 0x00, 0x00, 0xAF, 0x0E}},
                         Row{CameraMove::Right, {0xA0, 1, 0, 0x02, 0x20, 0x00, 0xAF, 0x2C}},
                         Row{CameraMove::Left, {0xA0, 1, 0, 0x04, 0x20, 0x00, 0xAF, 0x2A}},
                         Row{CameraMove::Up, {0xA0, 1, 0, 0x08, 0x00, 0x20, 0xAF, 0x26}},
                         Row{CameraMove::Down, {0xA0, 1, 0, 0x10, 0x00, 0x20, 0xAF, 0x3E}}}) {
    EXPECT_EQ(PelcoP(kCameraAddress, row.move), row.frame) << static_cast<int>(row.move);
  }
  for (int address = 0; address < 256; ++address) {
    const auto frame = PelcoP(static_cast<uint8_t>(address), CameraMove::Stop);
    EXPECT_EQ(frame[1], address);
    EXPECT_EQ(frame[7], 0xA0 ^ 0xAF ^ address);
  }
}

}  // namespace
}  // namespace quoll
