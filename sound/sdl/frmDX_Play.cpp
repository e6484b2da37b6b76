#include "sound/sdl/frmDX_Play.h"

#include <SDL.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

namespace quoll {

namespace {

constexpr int32_t kHalfBytes = 4410;
constexpr int32_t kChunksOfAHalf = 5;  // a fiftieth of a second each, so that a device adds little delay
constexpr int32_t kClockChunk = 64;    // samples, a power of 2: the driver without a device rounds up to one
constexpr std::chrono::milliseconds kClockChunkTime{2};  // what it sleeps for one

// Errors by their kind, since SDL gives no numbers.
enum ErrorNumber { kNoSystem = 1, kNoDevice = 2, kBadFormat = 3 };

std::string ErrorText(ErrorNumber number, const std::string& description) {
  return "Error: " + std::to_string(number) + "\r\nDesription: " + description + "\r\nSource: SDL";
}

bool StartAudio() {
  // The program ends by its own means on a signal.
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "QUOLLEMU");
  return SDL_WasInit(SDL_INIT_AUDIO) != 0 || SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
}

// SDL's driver without a device has no clock: it sleeps whole milliseconds for each chunk, too short a time.
bool HasNoClock() {
  const char* name = SDL_GetCurrentAudioDriver();
  return name != nullptr && std::string_view(name) == "dummy";
}

// Without a clock the next half begins by the system's, to the nearest chunk.
bool IsTooEarly(const frmDX_Play& form) {
  return form.byClock && PlayBuffer::Clock::now() + kClockChunkTime / 2 < form.nextHalf;
}

void HalfBegun(frmDX_Play& form) {
  const auto now = PlayBuffer::Clock::now();
  const bool late = now - form.nextHalf > form.halfTime / 2;  // or the very first
  form.nextHalf = (late ? now : form.nextHalf) + form.halfTime;
  const uint64_t one = 1;
  // It cannot fail but by running full, and then it can be read anyway.
  [[maybe_unused]] const ssize_t written = write(form.wake, &one, sizeof one);
}

void SDLCALL TakeBytes(void* user, Uint8* stream, int length) {
  auto& form = *static_cast<frmDX_Play*>(user);
  std::span<uint8_t> out(stream, static_cast<size_t>(length));
  while (!out.empty()) {
    const size_t rest = form.HalfSize - form.buffer.cursor;
    if (rest == 0 && IsTooEarly(form)) {
      std::ranges::fill(out, PlayBuffer::kSilence);
      return;
    }
    const size_t count = std::min(out.size(), rest > 0 ? rest : form.HalfSize);
    if (PlayTake(form.buffer, out.first(count))) HalfBegun(form);
    out = out.subspan(count);
  }
}

SDL_AudioDeviceID Open(const SoundFormat& format, int32_t samples, frmDX_Play* user) {
  SDL_AudioSpec wanted{};
  wanted.freq = format.SamplesPerSec;
  wanted.format = format.BitsPerSample == 8 ? AUDIO_U8 : AUDIO_S16LSB;
  wanted.channels = static_cast<Uint8>(format.Channels);
  wanted.samples = static_cast<Uint16>(samples);
  wanted.callback = TakeBytes;
  wanted.userdata = user;
  const std::string name(format.DeviceGuid);
  return SDL_OpenAudioDevice(name.empty() ? nullptr : name.c_str(), 0, &wanted, nullptr, 0);
}

}  // namespace

frmDX_Play::frmDX_Play() : wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

frmDX_Play::~frmDX_Play() {
  UninitializeSound(*this);
  if (SDL_WasInit(SDL_INIT_AUDIO) != 0) SDL_QuitSubSystem(SDL_INIT_AUDIO);
  if (wake >= 0) close(wake);
}

bool SoundDeviceOpens() {
  if (!StartAudio()) return false;
  frmDX_Play probe;
  return Initialize(probe, {22050, 8, 2, 0, {}}).empty();
}

std::string Initialize(frmDX_Play& form, const SoundFormat& format) {
  UninitializeSound(form);
  const int32_t blockAlign = format.BitsPerSample * format.Channels / 8;
  const bool known = (format.BitsPerSample == 8 || format.BitsPerSample == 16) && format.Channels >= 1 &&
                     format.Channels <= 2 && format.SamplesPerSec > 0;
  const int32_t wanted = format.HalfBufferSize > 0 ? format.HalfBufferSize : kHalfBytes;
  if (!known || wanted < blockAlign) return ErrorText(kBadFormat, "The sound format is not supported");
  if (form.wake < 0 || !StartAudio()) return ErrorText(kNoSystem, SDL_GetError());
  form.HalfSize = static_cast<size_t>(wanted - wanted % blockAlign);
  PlayReset(form.buffer, form.HalfSize);

  constexpr int32_t kMostSamples = 0x4000;
  const auto samples = static_cast<int32_t>(form.HalfSize) / blockAlign;
  form.byClock = HasNoClock();
  form.halfTime = std::chrono::nanoseconds(int64_t{1'000'000'000} * samples / format.SamplesPerSec);
  form.nextHalf = {};
  const int32_t chunk = form.byClock ? kClockChunk : std::clamp(samples / kChunksOfAHalf, 1, kMostSamples);
  form.device = Open(format, chunk, &form);
  return form.device != 0 ? std::string() : ErrorText(kNoDevice, SDL_GetError());
}

void UninitializeSound(frmDX_Play& form) {
  if (form.device != 0) SDL_CloseAudioDevice(form.device);
  form.device = 0;
}

bool SoundPlay(frmDX_Play& form) {
  if (form.device != 0) SDL_PauseAudioDevice(form.device, 0);
  return true;
}

bool SoundStop(frmDX_Play& form) {
  if (form.device != 0) SDL_PauseAudioDevice(form.device, 1);
  return true;
}

int64_t ServeSound(frmDX_Play& form, const NeedWavData& needWavData) {
  int64_t begun = 0;
  while (form.device != 0 && PlayWantsData(form.buffer)) {
    begun = form.buffer.enteredTime.load(std::memory_order_relaxed);
    needWavData(PlayHalfToFill(form.buffer));
    PlayFilled(form.buffer);
  }
  return begun;
}

}  // namespace quoll
