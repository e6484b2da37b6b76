#include "forms/TTools.h"

#include <array>

#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr std::array kControls{
    Control{"Text1", ControlKind::Text, [](Machine& m) -> ControlField { return &m.tools.Text1; }},
};

}  // namespace

std::span<const Control> TToolsControls() { return kControls; }

}  // namespace quoll
