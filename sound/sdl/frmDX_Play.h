// frmDX_Play: the sound device. It plays the two halves of a PlayBuffer by a thread of SDL's, which tells of
// each half that begins by a descriptor that the main thread's event loop can wait for.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "core/Host.h"
#include "sound/sdl/PlayBuffer.h"

namespace quoll {

struct frmDX_Play {
  frmDX_Play();
  ~frmDX_Play();
  frmDX_Play(const frmDX_Play&) = delete;
  frmDX_Play& operator=(const frmDX_Play&) = delete;

  PlayBuffer buffer;
  size_t HalfSize = 0;                       // bytes
  uint32_t device = 0;                       // SDL's number, 0 while there is none
  bool byClock = false;                      // the device has no clock of its own
  PlayBuffer::Clock::duration halfTime{};    // that a half takes
  PlayBuffer::Clock::time_point nextHalf{};  // when the next one should begin; the sound thread's own
  int wake = -1;  // can be read when a half has begun; -1 when the system has none left
};

// Whether a sound device can be opened at all.
bool SoundDeviceOpens();

// Opens the device and makes the buffer, in the place of those that are there. It does not play yet. Returns
// three lines on what went wrong, empty for nothing.
std::string Initialize(frmDX_Play& form, const SoundFormat& format);
// Closes the device, if there is one.
void UninitializeSound(frmDX_Play& form);
// Both do nothing without a device, and return true.
bool SoundPlay(frmDX_Play& form);
bool SoundStop(frmDX_Play& form);

// On the main thread: raises the event NeedWavData for each half that has begun to play since the last call,
// with the half that is to be filled. Returns the time at which the last one began, 0 when none has.
using NeedWavData = std::function<void(std::span<uint8_t> data)>;
int64_t ServeSound(frmDX_Play& form, const NeedWavData& needWavData);

}  // namespace quoll
