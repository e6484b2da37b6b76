#include "cards/Tools.h"

#include <array>

#include "core/Machine.h"

namespace quoll {

namespace {

constexpr std::array kControls{
    Control{"Text1", ControlKind::Text, [](Machine& m) -> ControlField { return &m.tools.Text1; }},
};

}  // namespace

std::span<const Control> TToolsControls() { return kControls; }

}  // namespace quoll
