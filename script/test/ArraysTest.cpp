#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "script/Script.h"

namespace quoll::test {
namespace {

// A Lua state with the whole interface, without quollrun around it.
class Arrays : public testing::Test {
 protected:
  Arrays() {
    lua_pushcfunction(L, OpenScript);
    lua_pushlightuserdata(L, script.get());
    EXPECT_EQ(lua_pcall(L, 1, 0, 0), LUA_OK);
  }
  ~Arrays() override { lua_close(L); }

  // Runs a piece of Lua; its error, or "".
  std::string Run(const char* text) {
    const int status = luaL_dostring(L, text) ? 1 : 0;
    std::string error = status == 0 ? "" : lua_tostring(L, -1);
    lua_settop(L, 0);
    return error;
  }

  std::unique_ptr<Script> script = std::make_unique<Script>();
  lua_State* L = luaL_newstate();
};

TEST_F(Arrays, PagesOfACartridge) {
  Machine& m = script->machine;
  m.MexPages.resize(kMexPageCount);
  EXPECT_EQ(Run(R"(
    assert(#MexPages == 256)
    for page = 0, 255 do
      assert(#MexPages[page] == 0x4000)
      MexPages[page][0], MexPages[page][0x3FFF] = page, 255 - page
    end
    MexPages[7]:set(1, "seven")
    assert(MexPages[7]:get(0, 6) == "\7seven")
    assert(not pcall(function() return MexPages[256] end))
    assert(not pcall(function() return MexPages[0][0x4000] end))
    kept = MexPages[255]
  )"),
            "");
  for (size_t page = 0; page < 256; ++page) {
    EXPECT_EQ(m.MexPages[page].front(), page);
    EXPECT_EQ(m.MexPages[page].back(), 255 - page);
  }
  EXPECT_EQ(m.MexPages[7][1], 's');
}

// A script may hold on to a page when its cartridge goes.
TEST_F(Arrays, APageThatHasGone) {
  script->machine.MexPages.resize(kMexPageCount);
  ASSERT_EQ(Run("kept = MexPages[255]; assert(kept[5] == 0)"), "");
  script->machine.MexPages = {};
  EXPECT_EQ(Run(R"(
    assert(#kept == 0 and MexPages[255] == nil)
    local ok, message = pcall(function() return kept[5] end)
    assert(not ok and message:find("out of range"))
    ok, message = pcall(function() kept[5] = 1 end)
    assert(not ok and message:find("out of range"))
    assert(kept:get(0, 0) == "")
    assert(not pcall(kept.get, kept, 0, 1))
    kept:set(0, "")
    assert(not pcall(kept.set, kept, 0, "a"))
  )"),
            "");
}

// Each name reaches the machine's own array.
TEST_F(Arrays, ReachTheMachine) {
  ASSERT_EQ(Run(R"(
    MemImage[0x3C000], PortShadow[255], CrtcRegs[18], KeyMatrix[15], BorderLines[287] = 1, 2, 3, 4, 5
    PalHistory[2][256], DacSlots[440], BlockBuffer[4409] = 6, 7, 8
    ToneOut[440], SaaOutL[440], SaaOutR[440], SnOut[440] = 9, 10, 11, 12
    Ym3812Out[440], Ym2413Out[440], SidOut[440], AyOut[440] = 13, 14, 15, 16
    RunState.PcHistory[9] = 17
  )"),
            "");
  const Machine& m = script->machine;
  const std::array<int32_t, 17> values{
      m.MemImage[0x3C000],       m.PortShadow[255],          m.crtc.CrtcRegs[18],
      m.keyboard.KeyMatrix[15],  m.palette.BorderLines[287], m.palette.PalHistory[2][256],
      m.tone.DacSlots[440],      m.mixer.BlockBuffer[4409],  m.tone.ToneOut[440],
      m.card.saa.SaaOutL[440],   m.card.saa.SaaOutR[440],    m.card.sn.SnOut[440],
      m.card.opl.Ym3812Out[440], m.card.opll.Ym2413Out[440], m.card.sid.SidOut[440],
      m.card.ay.AyOut[440],      m.run.PcHistory[9]};
  for (size_t i = 0; i < values.size(); ++i) EXPECT_EQ(values[i], static_cast<int32_t>(i) + 1);
}

}  // namespace
}  // namespace quoll::test
