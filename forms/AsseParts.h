// What the files of the assembler's window share: the handlers, each in the file of its part of the window.
#pragma once

#include <cstdint>
#include <string_view>

namespace quoll {

struct Machine;

namespace asse {

// AsseSource.cpp: the editor, the listing and the symbols.
void RText1_Change(Machine& m);
void SelStart_Change(Machine& m);
void Command1_Click(Machine& m);
void Command2_Click(Machine& m);
void Command3_Click(Machine& m);
void Command4_Click(Machine& m);
void Command5_Click(Machine& m);
void Command11_Click(Machine& m);
void Check2_Click(Machine& m);
void List3_DoubleClick(Machine& m);
void Format(Machine& m);

// AsseHelp.cpp: the opcode help.
void RestartHelp(Machine& m);
void StopHelp(Machine& m);
void Timer1_Timer(Machine& m);
void List2_Click(Machine& m);
void List2_DoubleClick(Machine& m);

// AsseFiles.cpp: the file panel and the files.
void xOpen_Click(Machine& m);
void xSave_Click(Machine& m);
void xEdit_Click(Machine& m);
void Drive1_Click(Machine& m);
void Dir1_DoubleClick(Machine& m);
void File1_Click(Machine& m);
void File1_DoubleClick(Machine& m);
void Combo1_Click(Machine& m);
void Command14_Click(Machine& m);
void RText2_DoubleClick(Machine& m);

// AssePictures.cpp: the importers.
void LoadPic2(Machine& m);
void LoadPic4(Machine& m);
void LoadPic16(Machine& m);

void TellFileOpenError(Machine& m);

}  // namespace asse
}  // namespace quoll
