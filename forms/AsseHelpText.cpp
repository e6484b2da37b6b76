// The help text of the assembler's window. Its blanks at the ends of lines belong to it.
#include "forms/Asse.h"

namespace quoll {

namespace {

constexpr std::string_view kText =
    "Z80 Assembler parancsok:\n"
    "\n"
    "Az utasítások decimális és hexadecimális értékekeket \n"
    "fogadnak el.\n"
    "LD A,15  LD A,$15\n"
    "\n"
    "ORG n\t(fordítás a megadott címtől)\n"
    "\n"
    "Címke:\t(hivatkozáskor @ van előtte!)\n"
    "\n"
    "cim:\n"
    "JP @cim\n"
    "\n"
    "Speciális debug parancsok:\n"
    "*INT\t(maszkolható interrupt)\n"
    "*NMI\t(nem maszkolható interrupt)\n"
    "*RESET\t(reset)\n"
    "*BREAK\t(futás megszakítás)\n"
    "\n"
    "DB n\t(egy byte az aktuális fordítási camre)\n"
    "DB 1,2,3....\n"
    "DB \"szöveg\"\n"
    "\n"
    "DW n\t(egy szó az aktuális fordítási camre)\n"
    "DW 1,2.3...\n"
    "\n"
    "DS s,n\tfeltölt n byte-ot s értékével \t\n"
    "DS 0,255\n"
    "DS \"x\",255\n"
    "\n"
    "INCBIN fájl betöltése az aktuális memória címre\n"
    "INCBIN \"adatok.dat\"\n"
    "\n"
    "példa:\n"
    "\n"
    "'program neve\n"
    "org 10000   'innen indul\n"
    "*break\n"
    "di\n"
    "ee:\n"
    "ld a,r\n"
    "out (0),a\n"
    "jr @ee";

}  // namespace

const std::string_view kAsseHelpText = kText;

}  // namespace quoll
