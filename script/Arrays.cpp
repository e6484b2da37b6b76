// The machine's arrays: `X[i]`, `#X`, `X:get(first, count)`, `X:set(first, data)`, indices from 0.
#include <array>
#include <cstdint>
#include <cstring>

#include "script/Script.h"

namespace quoll {

namespace {

enum class Element { Byte, Int16, Int32, Trail };

// Where the elements are at this moment. A script can hold on to a page of a cartridge that has been
// unloaded, so each access asks anew.
struct View {
  void* data;  // null: nothing is stored there yet, all elements are 0
  lua_Integer size;
  Element element;
  lua_Integer stride = 1;  // of bytes: how far the next one is
};

View Of(uint8_t* data, size_t size) { return {data, static_cast<lua_Integer>(size), Element::Byte}; }
View Of(int16_t* data, size_t size) { return {data, static_cast<lua_Integer>(size), Element::Int16}; }
View Of(int32_t* data, size_t size) { return {data, static_cast<lua_Integer>(size), Element::Int32}; }

template <typename Array>
View Of(Array& array) {
  return Of(array.data(), array.size());
}

// Records that are bytes throughout, one after the other in the order of their fields.
template <typename Record, size_t kCount>
View BytesOf(std::array<Record, kCount>& records) {
  static_assert(alignof(Record) == 1 && std::is_trivially_copyable_v<Record>);
  return Of(reinterpret_cast<uint8_t*>(records.data()), sizeof records);
}

constexpr View kNothing{nullptr, 0, Element::Byte};

// A drive's bytes; the disks lie byte by byte beside each other.
View OfDrive(Floppy& floppy, lua_Integer drive) {
  uint8_t* first = floppy.DiskData.empty() ? nullptr : &floppy.DiskData.front()[static_cast<size_t>(drive)];
  return {first, static_cast<lua_Integer>(kDiskSize), Element::Byte, static_cast<lua_Integer>(kDrives)};
}

struct ArrayKind {
  const char* name;
  View (*view)(Machine&, lua_Integer row);
  // An array of rows: how many there can be, and whether there are any now.
  lua_Integer rows = 0;
  bool (*exists)(const Machine&) = nullptr;
  void (*written)(Machine&) = nullptr;  // makes a write take effect
  void (*writing)(Machine&) = nullptr;  // before a write: makes room
};

constexpr ArrayKind kPcHistory{"RunState.PcHistory", [](Machine& m, lua_Integer) {
                                 return View{&m.run.PcHistory, PcTrail::kShown, Element::Trail};
                               }};

constexpr std::array kArrays{
    ArrayKind{"MemImage", [](Machine& m, lua_Integer) { return Of(m.MemImage); }},
    ArrayKind{"MexPages",
              [](Machine& m, lua_Integer row) {
                const auto page = static_cast<size_t>(row);
                return page < m.MexPages.size() ? Of(m.MexPages[page]) : kNothing;
              },
              kMexPageCount, [](const Machine& m) { return !m.MexPages.empty(); }},
    ArrayKind{"PortShadow", [](Machine& m, lua_Integer) { return Of(m.PortShadow); }, 0, nullptr, RenewPages},
    ArrayKind{"CrtcRegs", [](Machine& m, lua_Integer) { return Of(m.crtc.CrtcRegs); }},
    ArrayKind{"KeyMatrix", [](Machine& m, lua_Integer) { return Of(m.keyboard.KeyMatrix); }},
    ArrayKind{"PalHistory",
              [](Machine& m, lua_Integer row) { return Of(m.palette.PalHistory[static_cast<size_t>(row)]); },
              static_cast<lua_Integer>(std::tuple_size_v<decltype(Palette::PalHistory)>)},
    ArrayKind{"BorderLines", [](Machine& m, lua_Integer) { return Of(m.palette.BorderLines); }},
    ArrayKind{"DacSlots", [](Machine& m, lua_Integer) { return Of(m.tone.DacSlots); }},
    ArrayKind{"BlockBuffer", [](Machine& m, lua_Integer) { return Of(m.mixer.BlockBuffer); }},
    ArrayKind{"ToneOut", [](Machine& m, lua_Integer) { return Of(m.tone.ToneOut); }},
    ArrayKind{"SaaOutL", [](Machine& m, lua_Integer) { return Of(m.card.saa.SaaOutL); }},
    ArrayKind{"SaaOutR", [](Machine& m, lua_Integer) { return Of(m.card.saa.SaaOutR); }},
    ArrayKind{"SnOut", [](Machine& m, lua_Integer) { return Of(m.card.sn.SnOut); }},
    ArrayKind{"Ym3812Out", [](Machine& m, lua_Integer) { return Of(m.card.opl.Ym3812Out); }},
    ArrayKind{"Ym2413Out", [](Machine& m, lua_Integer) { return Of(m.card.opll.Ym2413Out); }},
    ArrayKind{"SidOut", [](Machine& m, lua_Integer) { return Of(m.card.sid.SidOut); }},
    ArrayKind{"AyOut", [](Machine& m, lua_Integer) { return Of(m.card.ay.AyOut); }},
    ArrayKind{"DiskData", [](Machine& m, lua_Integer drive) { return OfDrive(m.floppy, drive); }, kDrives,
              nullptr, nullptr, [](Machine& m) { m.floppy.DiskData.resize(kDiskSize); }},
    ArrayKind{"SN_Reg", [](Machine& m, lua_Integer) { return Of(m.card.sn.SN_Reg); }},
    ArrayKind{"AY_Reg", [](Machine& m, lua_Integer) { return Of(m.card.ay.AY_Reg); }},
    ArrayKind{"SAA_Amp", [](Machine& m, lua_Integer) { return Of(m.card.saa.SAA_Amp); }},
    ArrayKind{"SAA_Freq", [](Machine& m, lua_Integer) { return BytesOf(m.card.saa.SAA_Freq); }},
    ArrayKind{"SAA_Enable", [](Machine& m, lua_Integer) { return BytesOf(m.card.saa.SAA_Enable); }},
    ArrayKind{"SAA_Noise", [](Machine& m, lua_Integer) { return Of(m.card.saa.SAA_Noise); }},
    ArrayKind{"SAA_Env", [](Machine& m, lua_Integer) { return BytesOf(m.card.saa.SAA_Env); }},
    ArrayKind{"OPL_Reg", [](Machine& m, lua_Integer) { return Of(m.card.opl.OPL_Reg); }},
    ArrayKind{"OPLL_Reg", [](Machine& m, lua_Integer) { return Of(m.card.opll.OPLL_Reg); }},
    ArrayKind{"SID_Reg", [](Machine& m, lua_Integer) { return Of(m.card.sid.SID_Reg); }},
};

// What a Lua value of an array holds: the array, or one of its rows.
struct ArrayRef {
  const ArrayKind* kind;
  lua_Integer row;
};

constexpr lua_Integer kAllRows = -1;
constexpr const char* kMetatable = "quollrun.array";

bool IsRows(const ArrayRef& ref) { return ref.kind->rows != 0 && ref.row == kAllRows; }

lua_Integer RowCount(const ArrayRef& ref, const Machine& m) {
  return ref.kind->exists == nullptr || ref.kind->exists(m) ? ref.kind->rows : 0;
}

void PushArray(lua_State* L, const ArrayKind& kind, lua_Integer row) {
  auto* ref = static_cast<ArrayRef*>(lua_newuserdatauv(L, sizeof(ArrayRef), 0));
  *ref = {&kind, row};
  luaL_setmetatable(L, kMetatable);
}

ArrayRef CheckArray(lua_State* L) { return *static_cast<ArrayRef*>(luaL_checkudata(L, 1, kMetatable)); }

lua_Integer CheckIndex(lua_State* L, const ArrayRef& ref, lua_Integer size) {
  const lua_Integer index = luaL_checkinteger(L, 2);
  if (index < 0 || index >= size) {
    Refuse(L, "%s: index %I out of range, there are %I elements", ref.kind->name, index, size);
  }
  return index;
}

// View of an array of elements; an array of rows is an error.
View CheckView(lua_State* L, Script& script, const ArrayRef& ref) {
  if (IsRows(ref)) Refuse(L, "%s: its elements are rows", ref.kind->name);
  return ref.kind->view(script.machine, ref.row);
}

lua_Integer Load(const View& view, lua_Integer index) {
  if (view.data == nullptr) return 0;
  switch (view.element) {
    case Element::Byte: return static_cast<const uint8_t*>(view.data)[index * view.stride];
    case Element::Int16: return static_cast<const int16_t*>(view.data)[index];
    case Element::Int32: return static_cast<const int32_t*>(view.data)[index];
    case Element::Trail: return (*static_cast<const PcTrail*>(view.data))[static_cast<uint32_t>(index)];
  }
  return 0;
}

void Store(const View& view, lua_Integer index, lua_Integer value) {
  switch (view.element) {
    case Element::Byte:
      static_cast<uint8_t*>(view.data)[index * view.stride] = static_cast<uint8_t>(value);
      break;
    case Element::Int16: static_cast<int16_t*>(view.data)[index] = static_cast<int16_t>(value); break;
    case Element::Int32: static_cast<int32_t*>(view.data)[index] = static_cast<int32_t>(value); break;
    case Element::Trail:
      (*static_cast<PcTrail*>(view.data))[static_cast<uint32_t>(index)] = static_cast<int32_t>(value);
      break;
  }
}

// View of an array whose elements are to be changed.
View CheckWritable(lua_State* L, Script& script, const ArrayRef& ref) {
  if (!IsRows(ref) && ref.kind->writing != nullptr) ref.kind->writing(script.machine);
  return CheckView(L, script, ref);
}

void Written(Script& script, const ArrayRef& ref) {
  if (ref.kind->written != nullptr) ref.kind->written(script.machine);
}

int Get(lua_State* L, Script& script) {
  const ArrayRef ref = CheckArray(L);
  const View view = CheckView(L, script, ref);
  const lua_Integer first = luaL_checkinteger(L, 2);
  const lua_Integer count = luaL_checkinteger(L, 3);
  if (first < 0 || count < 0 || first > view.size || count > view.size - first) {
    return luaL_error(L, "%s: %I elements from %I on are out of range, there are %I", ref.kind->name, count,
                      first, view.size);
  }
  if (view.element == Element::Byte) {
    luaL_Buffer bytes;
    char* text = luaL_buffinitsize(L, &bytes, static_cast<size_t>(count));
    for (lua_Integer i = 0; i < count; ++i) text[i] = static_cast<char>(Load(view, first + i));
    luaL_pushresultsize(&bytes, static_cast<size_t>(count));
    return 1;
  }
  lua_createtable(L, static_cast<int>(count), 0);
  for (lua_Integer i = 0; i < count; i++) {
    lua_pushinteger(L, Load(view, first + i));
    lua_rawseti(L, -2, i + 1);
  }
  return 1;
}

int Set(lua_State* L, Script& script) {
  const ArrayRef ref = CheckArray(L);
  const View view = CheckWritable(L, script, ref);
  const lua_Integer first = luaL_checkinteger(L, 2);
  const bool isString = lua_type(L, 3) == LUA_TSTRING && view.element == Element::Byte;
  if (!isString) luaL_checktype(L, 3, LUA_TTABLE);

  const auto count = static_cast<lua_Integer>(lua_rawlen(L, 3));
  if (first < 0 || first > view.size || count > view.size - first) {
    return luaL_error(L, "%s: %I elements from %I on are out of range, there are %I", ref.kind->name, count,
                      first, view.size);
  }
  if (isString) {
    const char* text = lua_tostring(L, 3);
    for (lua_Integer i = 0; i < count; ++i) Store(view, first + i, static_cast<uint8_t>(text[i]));
  } else {
    // All are looked at before the first is stored, so that a bad table changes nothing.
    for (const bool store : {false, true}) {
      for (lua_Integer i = 0; i < count; i++) {
        lua_rawgeti(L, 3, i + 1);
        int isInteger = 0;
        const lua_Integer value = lua_tointegerx(L, -1, &isInteger);
        if (isInteger == 0) return luaL_error(L, "%s: value %I is no integer", ref.kind->name, i + 1);
        lua_pop(L, 1);
        if (store) Store(view, first + i, value);
      }
    }
  }
  Written(script, ref);
  return 0;
}

int Index(lua_State* L, Script& script) {
  const ArrayRef ref = CheckArray(L);
  if (lua_type(L, 2) == LUA_TSTRING) {
    const char* name = lua_tostring(L, 2);
    const bool get = std::strcmp(name, "get") == 0;
    if (!get && std::strcmp(name, "set") != 0) return luaL_error(L, "%s has no '%s'", ref.kind->name, name);
    lua_pushcfunction(L, get ? Guarded<Get> : Guarded<Set>);
    return 1;
  }
  if (IsRows(ref)) {
    const lua_Integer row = CheckIndex(L, ref, ref.kind->rows);
    if (RowCount(ref, script.machine) == 0) {
      lua_pushnil(L);
    } else {
      PushArray(L, *ref.kind, row);
    }
    return 1;
  }
  const View view = CheckView(L, script, ref);
  lua_pushinteger(L, Load(view, CheckIndex(L, ref, view.size)));
  return 1;
}

int NewIndex(lua_State* L, Script& script) {
  const ArrayRef ref = CheckArray(L);
  const View view = CheckWritable(L, script, ref);
  const lua_Integer index = CheckIndex(L, ref, view.size);
  Store(view, index, luaL_checkinteger(L, 3));
  Written(script, ref);
  return 0;
}

int Length(lua_State* L, Script& script) {
  const ArrayRef ref = CheckArray(L);
  lua_pushinteger(L,
                  IsRows(ref) ? RowCount(ref, script.machine) : ref.kind->view(script.machine, ref.row).size);
  return 1;
}

}  // namespace

void PushPcHistory(lua_State* L) { PushArray(L, kPcHistory, kAllRows); }

void OpenArrays(lua_State* L) {
  luaL_newmetatable(L, kMetatable);
  lua_pushcfunction(L, Guarded<Index>);
  lua_setfield(L, -2, "__index");
  lua_pushcfunction(L, Guarded<NewIndex>);
  lua_setfield(L, -2, "__newindex");
  lua_pushcfunction(L, Guarded<Length>);
  lua_setfield(L, -2, "__len");
  lua_pop(L, 1);

  for (const ArrayKind& kind : kArrays) {
    PushArray(L, kind, kAllRows);
    lua_setglobal(L, kind.name);
  }
}

}  // namespace quoll
