// Cartridge images "*.crt": 16 KB in the cartridge window, or the 4 MB store of
// "mex4mb.crt".
#pragma once

#include <string>

namespace quoll {

struct Machine;

inline constexpr const char* kMexStoreFile = "mex4mb.bin";

// Makes the file the cartridge and builds the machine anew with it, now and whenever it is built again. A
// name without a folder, or a path where nothing is, stands for the file of that name in the program folder.
// A short file is filled up with zeros. When there is none, the program ends with a message.
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
