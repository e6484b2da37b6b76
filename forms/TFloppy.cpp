#include "forms/TFloppy.h"

#include <filesystem>

#include "core/Files.h"
#include "core/FolderList.h"
#include "core/FormTable.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

void File1_Click(Machine& m) {
  TFloppy_Insert(m, (std::filesystem::path(m.tfloppy.folder) / m.tfloppy.File1.Selected()).string());
}

constexpr On<&Machine::tfloppy> f;

constexpr std::array kControls{
    f.List<&TFloppy::File1>("File1", "Disks", File1_Click),
    f.Label<&TFloppy::Label1>("Label1", "Name of the disk"),
};

}  // namespace

void TFloppy_Show(Machine& m) {
  TFloppy& form = m.tfloppy;
  form.folder = m.panel.folder;
  form.File1.Fill(FilesIn(form.folder, "*.dsk").names);
  ShowForm(form.window);
}

void TFloppy_Insert(Machine& m, const std::string& file) {
  if (const std::string error = LoadDisk(m.floppy, file); !error.empty())
    return TellFileError(*m.host, error);
  m.tfloppy.Label1 = std::filesystem::path(file).filename().string();
}

constexpr Form kTFloppy{"TFloppy", "Disk Load", f.State, kControls};

}  // namespace quoll
