#include "forms/TTools.h"

#include "core/FormTable.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr On<&Machine::tools> f;

constexpr std::array kControls{
    f.Text<&TTools::Text1>("Text1", "Key code"),
};

}  // namespace

constexpr Form kTTools{"TTools", "Tools", f.State, kControls};

}  // namespace quoll
