// Cartridge images "*.crt" of the program folder: 16 KB in the cartridge window, or the 4 MB store of
// "mex4mb.crt".
#pragma once

#include <string>

namespace quoll {

struct Machine;

// Makes the file the cartridge and builds the machine anew with it. The path's last part counts: the file
// is looked for in the program folder, and a short one is filled up with zeros. When it isn't there the
// program ends with a message.
void LoadCRT(Machine& m, const std::string& file);

// Takes the cartridge out and builds the machine anew.
void UnloadCRT(Machine& m);

// Caption of the menu entry "Unload": with a cartridge it names it.
std::string UnloadCaption(const Machine& m);

// Saves the MEX4MB store, page 0 first, as "mex4mb.bin" of the working directory: 4 MB, which can be used
// as a "mex4mb.crt" again. False when there is no such cartridge or the file could not be saved: the
// user has been told, and an old file is as it was.
bool SaveMex4mb(Machine& m);

}  // namespace quoll
