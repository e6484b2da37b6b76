#include "forms/TPrint.h"

#include "core/FormTable.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

void Command2_Click(Machine& m) { m.printer.printed.clear(); }

constexpr On<&Machine::tprint> f;
constexpr On<&Machine::printer> printer;

constexpr std::array kControls{
    printer.Text<&Printer::printed>("Text1", "What was printed"),
    Button("Command2", "Clear", Command2_Click),
};

}  // namespace

constexpr Form kTPrint{"TPrint", "Printer", f.State, kControls};

}  // namespace quoll
