#include "devtools/test/model/PlainDisAsm.h"

#include "devtools/test/model/PlainTables.h"
#include "devtools/test/model/PlainText.h"

namespace quoll::plain {
namespace {

struct Decoded {
  std::string text;
  int32_t size;  // bytes
};

// Room is made at a column: everything from there moves right, 40 characters of it at most.
void Shift(std::string& text, int column, int by) {
  const std::string tail = Mid(text, column, 40);
  Overwrite(text, column + by, tail);
}

Decoded DecodeOne(const ReadByte& read, int32_t a) {
  const auto hex2 = [&](int32_t address) { return Hex(read(address), 2); };
  const std::string first = hex2(a) + hex2(a + 1);
  std::string prefix;
  int32_t opcodeAt = a;
  int32_t size = 1;
  if (first == "FDCB" || first == "DDCB") {
    prefix = first;
    opcodeAt = a + 3;
    size = 3;
  } else if (const std::string b0 = Left(first, 2); b0 == "CB" || b0 == "DD" || b0 == "FD" || b0 == "ED") {
    prefix = b0;
    opcodeAt = a + 1;
    size = 2;
  }

  const std::string search = ">" + prefix + hex2(opcodeAt) + " ";
  const int hit = InStr(DisAsmTable(), search);
  if (hit == 0) return {search + "Unknown!", static_cast<int32_t>(prefix.size() / 2) + 1};

  std::string text = Mid(DisAsmTable(), hit + 7, 40);
  if (const int end = InStr(text, "\r"); end > 0) text = Left(text, end - 1);
  text = Trim(text);

  if (search == ">DD36 " || search == ">FD36 ") {
    const std::string index = search == ">DD36 " ? "IX" : "IY";
    return {"LD " + index + "+" + hex2(a + 2) + ")," + hex2(a + 3), size + 2};
  }

  text += std::string(10, ' ');
  if (const int at = InStr(text, "nn"); at > 0) {
    Shift(text, at, 2);
    Overwrite(text, at, Hex(read(a + size) + 256 * read(a + size + 1), 4));
    size += 2;
  }
  text += std::string(10, ' ');
  if (const int at = InStr(text, "n"); at > 0) {
    Shift(text, at, 1);
    Overwrite(text, at, hex2(a + size));
    size += 1;
  }
  if (const int at = InStr(text, "PC+e"); at > 0) {
    const int e = read(a + 1);
    const int32_t target = a + (e >= 128 ? e - 256 : e) + 2;
    Overwrite(text, at - 1, Left(Hex(target, 4) + "  ", 6));
    size += 1;
  }
  for (const char* index : {"IX+d", "IY+d"}) {
    text += std::string(10, ' ');
    if (const int at = InStr(text, index); at > 0) {
      Overwrite(text, at + 3, hex2(a + 2) + ")");
      size += 1;
    }
  }
  return {text, size};
}

}  // namespace

std::string DisAsm(const ReadByte& read, int32_t address, int32_t count, int32_t mode) {
  std::string result;
  int32_t a = address;
  for (int32_t i = 0; i < count; ++i) {
    if (i > 0) result += "\r\n";
    const Decoded decoded = DecodeOne(read, a);
    if (mode == 1) result += " " + Hex(a, 4) + " " + Trim(decoded.text);
    if (mode == 0) result += Trim(decoded.text);
    a += decoded.size;
  }
  return result;
}

}  // namespace quoll::plain
