#include "cards/CardLinks.h"

namespace quoll {

std::string CreateMaps(CardLinks& links) {
  std::string error;
  const auto create = [&error](MMapper& map, std::string_view name, int32_t size) {
    try {
      map.CreateMap(name, size);
    } catch (const MapError& failure) {
      if (error.empty()) error = failure.what();
    }
  };
  create(links.sound, kSoundMap.name, kSoundMap.size);
  create(links.soundFlag, kSoundFlagMap.name, kSoundFlagMap.size);
  create(links.serial, links.serialName, kSerialMapName.size);
  return error;
}

std::span<uint8_t> SerialRecord(CardLinks& links) {
  if (links.serial.MapView == nullptr) return {};
  return {links.serial.MapView, static_cast<size_t>(links.serial.MapSize)};
}

bool CallCompanion(CardLinks& links, CompanionCall call, const std::string& folder) {
  switch (call) {
    case CompanionCall::Start:
      return CompanionRuns(links.serialName) || links.companion.Start(folder, links.serialName).empty();
    case CompanionCall::Show:
      return AskCompanion(links.serialName, CompanionRequest::Show) ||
             links.companion.Start(folder, links.serialName, {}).empty();
    case CompanionCall::Close: return AskCompanion(links.serialName, CompanionRequest::Close);
  }
  return false;
}

}  // namespace quoll
