// What the machine asks of the world around it. The desktop program, quollrun, the tests and the
// fuzzers each supply their own; whatever is left alone does nothing.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quoll {

struct Machine;
struct PixelImage;

enum class MessageIcon { None, Exclamation, Stop };

// Thrown when the machine ends the program: a wrong prefix, a write into a card's window, a missing
// ROM. The message has been shown by then; whoever owns the machine closes down.
struct ProgramEnd {};

// What the sound output is asked for.
struct SoundFormat {
  int32_t SamplesPerSec;
  int16_t BitsPerSample;
  int16_t Channels;
  int32_t HalfBufferSize;         // bytes of a half of its buffer; 0 or less: 4410
  std::string_view DeviceGuid{};  // a device's name, empty for the first one
};

// What is asked of the companion program, which joins the serial card to the world.
enum class CompanionCall {
  Start,  // shall run, out of the way
  Show,   // shall run and show its window
  Close,  // shall close its port and put its window away, if it runs
};

struct Host {
  virtual ~Host() = default;

  // Serves the user once: window events, timers, handlers. May change the machine in any way.
  virtual void Pump(Machine&) {}
  // Called after every 65536 passes that used no T-states, since a program made of them reaches no
  // frame end. A host with windows pumps here when its last pump is 50 ms old.
  virtual void Stalled(Machine&) {}
  // Called when a frame has ended, after its sound, whether it was drawn or not.
  virtual void FrameEnded(Machine&) {}
  // Waits until the sound output wants the next block: returns once mixer.NeedData is 1.
  virtual void WaitForBlock(Machine&);
  // Called with the block of five frames as soon as it is mixed.
  virtual void BlockMixed(Machine&) {}

  // The sound output: a buffer of two halves that plays in a loop and asks for each half anew when the other
  // one begins, by DirectSoundPlay_NeedWavData. InitializeSound makes it, in the place of one that is there;
  // it returns what went wrong, empty for nothing. The others return true.
  virtual std::string InitializeSound(const SoundFormat& /*format*/) { return {}; }
  virtual bool SoundPlay() { return true; }
  virtual bool SoundStop() { return true; }

  // Milliseconds since some fixed moment; wraps at 32 bits.
  virtual uint32_t TickCount() { return 0; }
  // A finer clock: counts, and counts per second (never 0).
  virtual int64_t PerformanceCounter() { return 0; }
  virtual int64_t PerformanceFrequency() { return 1; }

  // The memories that the machine shares with other programs, made once at the start. What went wrong, empty
  // for nothing.
  virtual std::string CreateMaps() { return {}; }
  // The one that the serial card and its companion exchange bytes through, kSerialMapSize bytes that may
  // change at any time; empty where there is none.
  virtual std::span<uint8_t> SerialRecord() { return {}; }
  // folder: the program's own, where the companion lies. False when none runs and none can be started.
  virtual bool CallCompanion(CompanionCall /*call*/, const std::string& /*folder*/) { return true; }

  // The host's printers by name, as they are at this moment.
  virtual std::vector<std::string> Printers() { return {}; }
  // Prints a text as a document: UTF-8, a line feed after each line, a form feed after each page, in the font
  // "terminal" of 9 points or the nearest to it that has all characters of one width. What went wrong, empty
  // for nothing.
  virtual std::string Print(const std::string& /*printer*/, std::string_view /*text*/) { return {}; }

  // Shows a message box with one button and waits for it where there is somebody to press it.
  virtual void MessageBox(std::string_view /*text*/, std::string_view /*title*/, MessageIcon /*icon*/) {}
  // Writes to an I/O port of the computer itself, where a sound chip may sit. False where that can't be done.
  virtual bool DirectOut(uint16_t /*port*/, uint16_t /*value*/) { return false; }
  // Puts a text, UTF-8, in the place of what the clipboard holds.
  virtual void SetClipboard(std::string_view /*text*/) {}
  // Reads a picture of any kind that the host knows. False, and the picture as it was, when it can't.
  virtual bool LoadPicture(const std::string& /*file*/, PixelImage& /*picture*/) { return false; }
  // Sounds the host's beeper: hertz, milliseconds.
  virtual void Beep(int /*frequency*/, int /*duration*/) {}
};

}  // namespace quoll
