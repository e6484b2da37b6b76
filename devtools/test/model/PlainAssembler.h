// The two-pass assembler told step by step, the slow way: every lookup searches the whole table, every line
// is normalised anew. It knows nothing of the machine but what its bus offers.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quoll::plain {

// What the assembler reaches of the world outside.
struct Bus {
  std::function<void(int32_t address, uint8_t value)> write;  // memory, address as computed
  std::function<void(uint8_t value)> setPage;                 // the memory page register's image
  std::function<std::optional<std::string>(const std::string& name)> file;  // nothing if it is missing
};

// A stretch of the listing in one colour, red in the low byte.
struct Span {
  int32_t colour;
  std::string text;

  bool operator==(const Span&) const = default;
};

struct Assembler {
  int32_t AsmPC = 0;               // address of the line
  std::vector<std::string> List1;  // symbols: value in 7 columns, name with its colon
  std::vector<std::string> List3;  // symbols as they are shown
  std::string Text13;              // status
  std::string Text14;              // pass
  int32_t statusColour = 0;        // background of both
  int32_t editorColour = 0;        // background of the editor
  std::string Label2;              // end address
  std::vector<Span> RText2;        // listing
  int32_t selStart = -1;           // failing line in the editor, counted from 0; -1 for none
  int32_t selLength = 0;
};

// Both passes over a source with CR LF between its lines. The time is left out of the status.
void Compile(Assembler& assembler, const Bus& bus, const std::string& source);

std::string ListingText(const Assembler& assembler);

// The steps, from here on.

// One line: what it is after TabTrim and Strim, and as it stands in the editor. Both are cut at a comment.
// The result is the line's size in bytes or an error code.
int32_t Pass1Line(Assembler& assembler, const Bus& bus, std::string& line, std::string& raw);
int32_t Pass2Line(Assembler& assembler, const Bus& bus, std::string& line, std::string& raw);

// Value of a name without its colon, -1 if there is none.
int32_t cimh(const Assembler& assembler, const std::string& name);

int32_t TVCASC(int32_t code);

}  // namespace quoll::plain
