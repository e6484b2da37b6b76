// The tape deck's form.
#include "forms/Forms.h"
#include "forms/TTape.h"
#include "testkit/FolderTest.h"

namespace quoll::test {

namespace {

struct TTapeTest : FolderTest {
  TTape& form = m.ttape;

  void Press(const char* name) { quoll::Press(m, TheControl("TTape", name)); }
  void Choose(const std::string& file) {
    const auto entry = std::ranges::find(form.File1.entries, file) - form.File1.entries.begin();
    EXPECT_TRUE(ChooseEntry(m, TheControl("TTape", "File1"), static_cast<int32_t>(entry))) << file;
  }
  void Tick() { TheControl("TTape", "Timer1").control->timer(m, 0); }
  void Motor(bool on) { m.PortShadow[5] = on ? 0x40 : 0xBF; }
  void Wave(const std::string& name, const Bytes& samples) {
    Bytes file(44 + samples.size(), 0);
    std::ranges::copy(samples, file.begin() + 44);
    WriteAll(Path(name), file);
  }
};

TEST_F(TTapeTest, AChosenFileIsTheTapeAtItsFirstSample) {
  Wave("one.wav", {255, 0});
  Wave("two.wav", {0, 255});
  Press("Command9");
  form.Label1 = "77";
  Choose("one.wav");
  EXPECT_EQ(form.Label1, "0");
  EXPECT_EQ(form.Label3, "one.wav");
  EXPECT_EQ(TapeRead(m.tape), 1);
  EXPECT_EQ(TapeRead(m.tape), 0);
  Choose("two.wav");
  EXPECT_EQ(form.Label3, "two.wav");
  EXPECT_EQ(TapeRead(m.tape), 0);
  EXPECT_EQ(TapeRead(m.tape), 1);
}

TEST_F(TTapeTest, TheListIsThatOfTheFilePanelsFolder) {
  std::filesystem::create_directory(folder / "tapes");
  Wave("tapes/x.wav", {255});
  m.panel.folder = Path("tapes");
  Press("Command9");
  m.panel.folder = Path("elsewhere");  // the list still shows the other one
  Choose("x.wav");
  EXPECT_EQ(TapeRead(m.tape), 1);
  EXPECT_EQ(Names(), (std::vector<std::string>{"tapes"}));
}

TEST_F(TTapeTest, KeysWindAndRewind) {
  struct Case {
    const char* key;
    int32_t speed;
    bool rewinds;
  };
  for (const auto& [key, speed, rewinds] :
       {Case{"Command1", -40, true}, Case{"Command2", 10, false}, Case{"Command3", 40, true}}) {
    Wave("tape.wav", {255, 0, 0});
    Press("Command9");
    Choose("tape.wav");
    TapeRead(m.tape);
    form.Label1 = form.Label2 = "9";
    form.WindSpeed = 3;
    Press(key);
    EXPECT_EQ(form.WindSpeed, speed) << key;
    EXPECT_EQ(TapeRead(m.tape), rewinds ? 1 : 0) << key;
    EXPECT_EQ(form.Label1, "0") << key;
    EXPECT_EQ(form.Label2, "9") << key;
  }
}

TEST_F(TTapeTest, TheSecondDeckRewindsTheOneTapeThereIs) {
  Wave("tape.wav", {255, 0});
  Press("Command9");
  Choose("tape.wav");
  TapeRead(m.tape);
  form.Label1 = form.Label2 = "9";
  form.WindSpeed = 3;
  Press("Command8");
  EXPECT_EQ(TapeRead(m.tape), 1);
  EXPECT_EQ(form.Label1, "9");
  EXPECT_EQ(form.Label2, "0");
  EXPECT_EQ(form.WindSpeed, 3);
}

TEST_F(TTapeTest, EjectShowsTheListAnew) {
  EXPECT_FALSE(form.File1Look.visible);
  Press("Command9");
  EXPECT_TRUE(form.File1Look.visible);
  EXPECT_TRUE(form.File1.entries.empty());
  Wave("new.wav", {});
  EXPECT_TRUE(form.File1.entries.empty());
  Press("Command9");
  EXPECT_EQ(form.File1.entries, std::vector<std::string>{"new.wav"});
}

TEST_F(TTapeTest, TheCounterFollowsTheMotor) {
  Motor(false);
  Tick();
  EXPECT_EQ(form.Label1, "0");
  EXPECT_EQ(form.playSpeed, 0);
  EXPECT_EQ(form.phase, 0);
  Motor(true);
  for (int i = 0; i < 12; ++i) Tick();
  EXPECT_EQ(form.Label1, "12");
  EXPECT_EQ(form.Label2, "12");
  EXPECT_EQ(form.playSpeed, 2);
  EXPECT_EQ(form.phase, 24);
  EXPECT_EQ(ReelPicture(form), 2);
  Motor(false);
  Tick();
  EXPECT_EQ(form.Label1, "12");
  EXPECT_EQ(form.phase, 24);
}

// The phase, in tenths of a picture: what the speeds add up to, within five pictures.
TEST_F(TTapeTest, ReelsWindAndComeToRest) {
  for (const bool motor : {false, true}) {
    for (const int32_t start : {-40, 10, 40}) {
      Motor(motor);
      form.phase = 7;
      form.WindSpeed = start;
      int speed = start, sum = 7;
      for (int tick = 0; tick < 60; ++tick) {
        Tick();
        sum += speed + (motor ? 2 : 0);
        if (speed != 0) speed += speed > 0 ? -1 : 1;
        ASSERT_EQ(form.WindSpeed, speed);
        ASSERT_EQ(form.phase, ((sum % 50) + 50) % 50);
        ASSERT_EQ(ReelPicture(form), ((sum % 50) + 50) % 50 / 10);
      }
      EXPECT_EQ(form.WindSpeed, 0);
    }
  }
}

}  // namespace

}  // namespace quoll::test
