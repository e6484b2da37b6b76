#include "sound/SoundCard.h"

namespace quoll {

void SoundCardInit(SoundCard& card) {
  SnInit(card.sn);
  OplReset(card.opl);
  OpllReset(card.opll);
  AyInit(card.ay);
}

void SoundCardReset(SoundCard& card) {
  SaaReset(card.saa);
  OplReset(card.opl);
  SnReset(card.sn);
  OpllReset(card.opll);
  SidReset(card.sid);
  AyReset(card.ay);
}

void SoundCardRender(SoundCard& card, const SoundCardControls& controls, Random& random) {
  SaaRender(card.saa, controls.saa, random);
  SnRender(card.sn, random);
  OplRender(card.opl, controls.opl);
  SidRender(card.sid, controls.sid, random);
  OpllRender(card.opll, controls.opll);
  AyRender(card.ay, random);
}

}  // namespace quoll
