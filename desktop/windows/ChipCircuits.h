// The circuits of the sound card around its chips, as far as the chips' windows show them: our own drawings.
#pragma once

#include "desktop/widgets/CircuitPicture.h"

namespace quoll {

CircuitPlan SnCircuit();
CircuitPlan SaaCircuit();

}  // namespace quoll
