#include "devtools/DisAsm.h"

#include <array>
#include <string_view>

#include "core/Wrap.h"
#include "devtools/OpcodeTables.h"
#include "devtools/ToolText.h"

namespace quoll {

namespace {

struct Instruction {
  std::string text;
  int32_t size = 0;  // bytes, 1 to 4
};

// Writes over the characters from a place on, which may be the text's end.
void Overwrite(std::string& text, size_t at, std::string_view what, size_t columns) {
  if (text.size() < at + columns) text.resize(at + columns, ' ');
  text.replace(at, columns, what.substr(0, columns));
}

// Puts the operands into the places that the row's text leaves for them.
void FillPlaceholders(const ByteReader& read, int32_t a, Instruction& instruction) {
  std::string& text = instruction.text;
  int32_t& size = instruction.size;
  const auto byteAt = [&](int32_t offset) -> int32_t { return read(WrappingAdd(a, offset)); };

  if (const size_t at = text.find("nn"); at != std::string::npos) {
    const int32_t word = byteAt(size) + 256 * byteAt(size + 1);
    text.replace(at, 2, Hex4(word));
    size += 2;
  }
  if (const size_t at = text.find('n'); at != std::string::npos) {
    text.replace(at, 1, Hex2(byteAt(size)));
    ++size;
  }
  if (const size_t at = text.find("PC+e"); at != std::string::npos) {
    // A target outside of 16 bits is not wrapped; of more than six digits only the first are left.
    const int32_t target = WrappingAdd(WrappingAdd(a, SignedByte(byteAt(1))), 2);
    Overwrite(text, at - 1, Hex4(target) + "  ", 6);
    ++size;
  }
  for (const std::string_view index : {"IX+d", "IY+d"}) {
    const size_t at = text.find(index);
    if (at == std::string::npos) continue;
    // The character behind the parenthesis is lost, "LD (IX+05)B": users of the listings know it so.
    Overwrite(text, at + 3, Hex2(byteAt(2)) + ")", 3);
    ++size;
  }
}

Instruction Decode(const ByteReader& read, int32_t a) {
  const auto byteAt = [&](int32_t offset) -> int32_t { return read(WrappingAdd(a, offset)); };
  const int32_t first = byteAt(0);
  const int32_t second = byteAt(1);

  Instruction instruction;
  std::string key = Hex2(first);
  if ((first == 0xDD || first == 0xFD) && second == 0xCB) {
    key += Hex2(second) + Hex2(byteAt(3));
    instruction.size = 3;
  } else if (first == 0xCB || first == 0xDD || first == 0xFD || first == 0xED) {
    key += Hex2(second);
    instruction.size = 2;
  } else {
    instruction.size = 1;
  }

  const std::string_view row = OpcodeRow(key);
  if (row.empty()) {
    instruction.text = ">" + key + " Unknown!";
  } else if (key == "DD36" || key == "FD36") {
    // Without an opening parenthesis, as it always was.
    instruction.text =
        std::string("LD ") + (first == 0xDD ? "IX+" : "IY+") + Hex2(byteAt(2)) + ")," + Hex2(byteAt(3));
    instruction.size += 2;
  } else {
    instruction.text = row;
    FillPlaceholders(read, a, instruction);
  }
  return instruction;
}

}  // namespace

std::string DisAsm(const ByteReader& read, int32_t address, int32_t count, int32_t mode) {
  std::string result;
  for (int32_t i = 0; i < count; ++i) {
    if (i > 0) result += "\r\n";
    const Instruction instruction = Decode(read, address);
    if (mode == 1) result.append(" ").append(Hex4(address)).append(" ");
    if (mode == 0 || mode == 1) result.append(Trim(instruction.text));
    address = WrappingAdd(address, instruction.size);
  }
  return result;
}

int32_t DisAsmSize(const ByteReader& read, int32_t address) { return Decode(read, address).size; }

}  // namespace quoll
