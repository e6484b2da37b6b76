#include "typing/Paste.h"

#include <algorithm>
#include <array>
#include <span>

#include "display/Keyboard.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

// Of the system ROM: its name, and the key queue, of which each place is a number of four bits.
constexpr std::string_view kSystem = "QUOLL BASIC";
constexpr size_t kQueueHead = 0x0B1D, kQueueTail = 0x0B1E;
constexpr int32_t kQueueMask = 15, kFullEnough = 8;

// Frames. Another ROM gets the longer times; a line, which it works on, the longest.
constexpr int32_t kNotTaken = 25;  // a key that has not been queued by then never is
constexpr int32_t kHeld = 2, kReleased = 2, kAfterLine = 12;

constexpr TypedKey kEnter{0x0D};

int32_t Queued(const Machine& m) { return (m.MemImage[kQueueTail] - m.MemImage[kQueueHead]) & kQueueMask; }

void Press(Machine& m, const TypedKey& key, bool down) {
  const auto set = [&](int32_t code) { KeyboardPress(m.keyboard, code, down); };
  if (key.shift) set(kShiftCode);
  if (key.altGr) {
    set(kCtrlCode);
    set(kAltCode);
  }
  set(key.code);
}

// It has been seen: by the system's queue, or by the time that has gone by.
bool IsTaken(const Paste& paste, const Machine& m) {
  if (!paste.hasQueue) return paste.frames >= kHeld;
  return m.MemImage[kQueueTail] != paste.queued || paste.frames >= kNotTaken;
}

bool MayPress(const Paste& paste, const Machine& m) {
  if (paste.hasQueue) return Queued(m) < kFullEnough && paste.frames >= 1;
  const bool line = paste.next > 0 && paste.keys[paste.next - 1] == kEnter;
  return paste.frames >= (line ? kAfterLine : kReleased);
}

// What stands for a character that no key gives; both UTF-8.
struct Substitute {
  std::string_view character, instead;
};
constexpr std::array kSubstitutes{
    Substitute{"\t", " "}, Substitute{"\u00A0", " "}, Substitute{"\u2013", "-"}, Substitute{"\u2014", "-"},
    Substitute{"‘", "'"},  Substitute{"’", "'"},      Substitute{"“", "\""},     Substitute{"”", "\""},
    Substitute{"„", "\""}, Substitute{"«", "<"},      Substitute{"»", ">"},      Substitute{"…", "..."},
    Substitute{"×", "*"},  Substitute{"÷", "/"},      Substitute{"\u2212", "-"}, Substitute{"≤", "<="},
    Substitute{"≥", ">="}, Substitute{"≠", "<>"},     Substitute{"à", "a"},      Substitute{"â", "a"},
    Substitute{"ä", "a"},  Substitute{"ã", "a"},      Substitute{"å", "a"},      Substitute{"ç", "c"},
    Substitute{"è", "e"},  Substitute{"ê", "e"},      Substitute{"ë", "e"},      Substitute{"ì", "i"},
    Substitute{"î", "i"},  Substitute{"ï", "i"},      Substitute{"ñ", "n"},      Substitute{"ò", "o"},
    Substitute{"ô", "o"},  Substitute{"õ", "o"},      Substitute{"ù", "u"},      Substitute{"û", "u"},
    Substitute{"ß", "ss"}, Substitute{"À", "A"},      Substitute{"Â", "A"},      Substitute{"Ä", "A"},
    Substitute{"Ç", "C"},  Substitute{"È", "E"},      Substitute{"Ê", "E"},      Substitute{"Ë", "E"},
    Substitute{"Ñ", "N"},  Substitute{"Ô", "O"},      Substitute{"Û", "U"},
};

std::string_view Instead(std::string_view character) {
  const auto found = std::ranges::find(kSubstitutes, character, &Substitute::character);
  return found != kSubstitutes.end() ? found->instead : std::string_view();
}

}  // namespace

PasteText KeysOfText(std::string_view text) {
  PasteText result;
  while (!text.empty()) {
    const std::string_view character = FirstCharacter(text);
    text.remove_prefix(character.size());
    if (character == "\r") {
      if (text.starts_with('\n')) continue;
      result.keys.push_back(kEnter);
    } else if (const TypedKey key = KeyOfCharacter(character); key.code != 0) {
      result.keys.push_back(key);
    } else {
      const std::string_view instead = Instead(character);
      for (const char c : instead) result.keys.push_back(KeyOfCharacter({&c, 1}));
      if (instead.empty()) ++result.leftOut;
    }
  }
  return result;
}

Paste StartPaste(const Machine& m, std::string_view text) {
  Paste paste;
  paste.keys = KeysOfText(text).keys;
  paste.frames = kAfterLine;
  const auto rom = std::span(m.MemImage).subspan(kVid0);
  paste.hasQueue = std::search(rom.begin(), rom.end(), kSystem.begin(), kSystem.end()) != rom.end();
  return paste;
}

bool PasteFrame(Paste& paste, Machine& m) {
  ++paste.frames;
  if (paste.down) {
    if (!IsTaken(paste, m)) return true;
    Press(m, paste.keys[paste.next], false);
    paste.down = false;
    paste.frames = 0;
    ++paste.next;
    const bool same =
        paste.next < paste.keys.size() && paste.keys[paste.next].code == paste.keys[paste.next - 1].code;
    if (!paste.hasQueue || same) return true;
    paste.frames = 1;  // another key may follow at once
  }
  if (paste.next == paste.keys.size()) return false;
  if (!MayPress(paste, m)) return true;
  Press(m, paste.keys[paste.next], true);
  paste.down = true;
  paste.frames = 0;
  paste.queued = m.MemImage[kQueueTail];
  return true;
}

void StopPaste(Paste& paste, Machine& m) {
  if (paste.down) Press(m, paste.keys[paste.next], false);
  paste = Paste();
}

}  // namespace quoll
