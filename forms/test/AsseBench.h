// The assembler's form in a folder of its own, with a host that has a clipboard and pictures.
#pragma once

#include <map>
#include <string>

#include "forms/Asse.h"
#include "forms/Forms.h"
#include "testkit/FolderTest.h"

namespace quoll::test {

struct AsseHost : TestHost {
  std::string clipboard;
  std::map<std::string, PixelImage> pictures;  // by the file's path

  void SetClipboard(std::string_view text) override { clipboard = text; }
  bool LoadPicture(const std::string& file, PixelImage& picture) override {
    if (!pictures.contains(file)) return false;
    picture = pictures[file];
    return true;
  }
};

struct AsseBench : FolderTest {
  AsseHost desk;
  Asse& form = m.asse;
  AsseFiles& files = form.files;

  AsseBench() {
    m.host = &desk;
    desk.machine = &m;
    desk.onTicks = [this](Machine&) { desk.ticks += 7; };
    m.PortShadow[2] = 0xB0;  // RAM everywhere
  }

  static ControlRef Ref(const char* name) { return TheControl("asse", name); }
  void Press(const char* name) { quoll::Press(m, Ref(name)); }
  void Type(const char* name, std::string_view text) { SetText(m, Ref(name), text); }
  void Enter(const char* name) { PressEnter(m, Ref(name)); }
  void Choose(const char* name, const std::string& entry) { Pick(ChooseEntry, name, entry); }
  void DoubleClickOn(const char* name, const std::string& entry) { Pick(DoubleClickEntry, name, entry); }
  void Caret(int32_t place) { SetScroll(m, Ref("SelStart"), place); }
  void Tick(int count = 1) {
    for (int i = 0; i < count; ++i) Ref("Timer1").control->timer(m, 0);
  }
  const std::string& Source() const { return form.source.RText1; }
  std::string Selected() const {
    return Source().substr(static_cast<size_t>(form.editor.SelStart.value),
                           static_cast<size_t>(form.editor.SelLength.value));
  }
  void File(const std::string& name, std::string_view text) {
    WriteAll(Path(name), Bytes(text.begin(), text.end()));
  }
  std::string Content(const std::string& name) const {
    const Bytes bytes = ReadAll(Path(name));
    return {bytes.begin(), bytes.end()};
  }
  Bytes Memory(size_t from, size_t count) const {
    return {m.MemImage.begin() + static_cast<ptrdiff_t>(from),
            m.MemImage.begin() + static_cast<ptrdiff_t>(from + count)};
  }

 private:
  void Pick(bool (*act)(Machine&, const ControlRef&, int32_t), const char* name, const std::string& entry) {
    const ListRef list = ListOf(m, *Ref(name).control);
    for (size_t i = 0; i < list.EntryCount(); ++i)
      if (list.Entry(i) == entry) return static_cast<void>(act(m, Ref(name), static_cast<int32_t>(i)));
    ADD_FAILURE() << name << " has no entry " << entry;
  }
};

}  // namespace quoll::test
