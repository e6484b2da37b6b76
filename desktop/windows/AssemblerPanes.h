// The smaller parts of the assembler's window.
#pragma once

class QWidget;

namespace quoll {

class FormKit;

QWidget* OpcodeHelpPane(FormKit& kit);
QWidget* DisassemblyPane(FormKit& kit);
QWidget* SymbolPane(FormKit& kit);
// Frame2.
QWidget* SourceFilesPane(FormKit& kit);
// The buttons that compile, start and stop a program, and those that work on the whole source.
QWidget* ProgramButtons(FormKit& kit);
QWidget* SourceButtons(FormKit& kit);

}  // namespace quoll
