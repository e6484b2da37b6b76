// asse: the assembler's window. A source editor, what compiling has given, help on opcodes, buttons that
// start a program, a file panel for sources, and pictures on their way into the video memory.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/Form.h"
#include "devtools/Assembler.h"
#include "devtools/PictureImport.h"
#include "devtools/SourceLines.h"

namespace quoll {

// The help on the assembler's language, in Hungarian.
extern const std::string_view kAsseHelpText;

inline constexpr int32_t kTextEnd = std::numeric_limits<int32_t>::max();

// The editor, RText1.
struct AsseSource {
  std::string RText1;                  // UTF-8; each line ends as it does in its file
  SourceCode code = SourceCode::Utf8;  // of the file
  std::string folder;  // of the file opened or saved last, where INCBIN looks first; empty: none

  bool operator==(const AsseSource&) const = default;
};

// The editor's caret and marks. A window follows the texts and selections by their counts.
struct AsseEditor {
  using ShownOnly = void;

  Scroll SelStart{0, 0, kTextEnd};   // caret or start of the selection, in bytes from the text's start
  Scroll SelLength{0, 0, kTextEnd};  // bytes
  Look RText1Look{.fore = 0, .back = kWhite};  // the background shows that the source is being compiled
  int32_t ErrorLine = 0;                       // the failing one, counted from 1; 0 when there is none
  uint32_t texts = 0;                          // how often RText1 has been changed
  uint32_t savedTexts = 0;                     // their count when the text was opened or saved last
  uint32_t selections = 0;                     // how often the machine, not the user, has made a selection

  bool operator==(const AsseEditor&) const = default;
};

// What the last compilation has given.
struct AsseListing {
  using ShownOnly = void;

  std::string Text13, Text14;                  // status, pass
  Look StatusLook{.fore = 0, .back = kWhite};  // of both
  std::string Label1 = "Size:";
  std::string Label2;  // AsmPC of the last complete compilation
  int32_t AsmPC = 0;
  bool CutOff = false;  // the source goes on behind what was compiled
  ListBox List1;        // symbol table, hidden
  Look List1Look{.visible = false};
  ListBox List3;       // symbols as shown
  std::string RText2;  // listing
  std::vector<ColouredText::Run> RText2Runs;
  Look RText2Look{.fore = asm_colour::kListing, .back = kWhite};
  int32_t SelStart = 0, SelLength = 0;  // selection in the listing, bytes
  uint32_t listings = 0;                // how often RText2 has been changed
  uint32_t selections = 0;              // how often something has been selected in it

  bool operator==(const AsseListing&) const = default;
};

// The opcode help.
struct AsseHelp {
  using ShownOnly = void;

  std::string Label3 = "LD (IX+d),n";  // a sample
  ListBox List2;                       // opcodes that go on like the caret's line
  std::string Text7;                   // flags: six characters
  std::string Text8, Text10, Text11;   // size, clock cycles, description
  std::array<std::string, 6> Label7;   // words for the flags C, N, P/V, H, Z, S
  std::array<Look, 6> Label7Look;
  int32_t wait = 0;  // ticks of Timer1 until the help follows the caret; 0: it is off

  bool operator==(const AsseHelp&) const = default;
};

// Frame2, the file panel, with the pictures.
struct AsseFiles {
  Look Frame2Look{.visible = false};
  std::string Command14Caption;  // "OPEN" or "SAVE": the button's caption, and what it does
  ListBox Drive1;                // where folders begin
  ListBox Dir1;                  // folders, ".." first where there is one above
  ListBox File1;
  ListBox Combo1{{"asm", "tvcasm", "picture", "sound"}, -1};  // type of the listed files
  std::string Text16;                                         // name
  std::string folder;            // that is listed, absolute; empty until the panel has been shown
  PixelImage ResPic;             // the picture that was picked
  PixelImage Image1;             // the same in small
  Scroll HScroll1{128, 0, 255};  // threshold of the import

  bool operator==(const AsseFiles&) const = default;
};

struct Asse {
  FormState window;
  bool opened = false;  // the window has been asked for
  AsseSource source;
  AsseEditor editor;
  AsseListing listing;
  AsseHelp help;
  AsseFiles files;

  bool Check1 = false;                  // "Undocumented*": the help lists them too
  bool Check2 = true;                   // "Debug": the listing is seen
  std::string Text5, Text6;             // number converter: decimal, hexadecimal
  std::string Text15 = "10000", Text9;  // disassembly: address, text
  Look Text4Look{.visible = false};     // the help text
  std::string Text4{kAsseHelpText};

  bool operator==(const Asse&) const = default;
};

// Menu entry "Assembler".
void Asse_Show(Machine& m);

// Replaces the source, as if it had been typed.
void SetSource(Machine& m, std::string_view text);
// The editor's user has replaced count lines from the one of number first on, counted from 0.
void EditSource(Machine& m, size_t first, size_t count, std::span<const std::string> with);
// The editor's user has moved the caret or selected something: bytes from the text's start.
void SelectSource(Machine& m, int32_t start, int32_t length);

// Button "Compile". True when the source is complete.
bool Asse_Compile(Machine& m);

// Selects this text, "0x2710" or the like, in the listing if it is there, in large or small letters.
void Dline(Machine& m, std::string_view text);

// What the machine would show of the picked picture, with the palette as it is now. Empty without one.
PixelImage PicturePreview(const Machine& m, ScreenColours colours);

// Opens a source in the editor. False when it can't be read: the user has been told.
bool OpenSource(Machine& m, const std::string& file);
// The window comes with this source.
void Asse_Insert(Machine& m, const std::string& file);
// Takes a picture for the import. False when it can't be read.
bool OpenPicture(Machine& m, const std::string& file);

extern const Form kAsse;

}  // namespace quoll
