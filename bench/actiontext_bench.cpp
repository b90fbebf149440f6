// How many memos the action text expands in a second, how often it asks for memory, and what Lua
// needs for a chunk that says the same.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <new>
#include <stdexcept>
#include <string>

#include "actiontext/action_text.h"
#include "platform/utf.h"

#ifdef MORVENLY_LUA
#include <lua.hpp>
#endif

namespace {

size_t g_allocations = 0;

void* Allocate(size_t size) {
  ++g_allocations;
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

void* operator new(size_t size) {
  return Allocate(size);
}
void* operator new(size_t size, std::align_val_t) {
  return Allocate(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, size_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, size_t, std::align_val_t) noexcept {
  std::free(memory);
}

namespace {

constexpr std::u16string_view kTemplate =
    u"開始 #SIStaDateTime#, 件名 #SISubject#. "
    u"#if (SICategory1 == \"仕事\") {\"W\"} else {\"P\"}# #Persons * 1000#人";
constexpr std::u16string_view kExpansion = u"開始 2010/11/14 09:00:00, 件名 会議. W 3000人";

store::Action Meeting(std::u16string_view memo) {
  store::Action action;
  action[store::kActId] = u"ID2010111409000042";
  action[store::kLastUpdate] = u"2010/11/14 09:00:00";
  action[store::kStaDateTime] = u"2010/11/14 09:00:00";
  action[store::kEndDateTime] = u"2010/11/14 10:30:00";
  action[store::kLatitude] = u"35.681237";
  action[store::kLongitude] = u"139.767125";
  action[store::kSubject] = u"会議";
  action[store::kPlace] = u"会社";
  action[store::kCategory1] = u"仕事";
  action[store::kCategory2] = u"打合せ";
  action[store::kMemo] = memo;
  action[store::kExtItems] = u"Persons:人数:int:3:";
  return action;
}

void Expand(benchmark::State& state, std::u16string_view memo) {
  const store::Action action = Meeting(memo);
  const size_t before = g_allocations;
  for (auto _ : state) {
    std::u16string shown = actiontext::ParseActionText(action);
    benchmark::DoNotOptimize(shown);
  }
  const auto allocations = static_cast<double>(g_allocations - before);
  state.counters["allocations"] =
      benchmark::Counter(allocations, benchmark::Counter::kAvgIterations);
  state.counters["expansions"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

void BM_Template(benchmark::State& state) {
  if (actiontext::ParseActionText(Meeting(kTemplate)) != kExpansion) {
    state.SkipWithError("wrong expansion");
    return;
  }
  Expand(state, kTemplate);
}
BENCHMARK(BM_Template);

// The longest memo that the data file takes: the template as often as it fits, filled up with text.
void BM_Memo2000(benchmark::State& state) {
  std::u16string memo;
  while (memo.size() + kTemplate.size() <= 2000) memo += kTemplate;
  memo.resize(2000, u'。');
  Expand(state, memo);
}
BENCHMARK(BM_Memo2000);

// The same length in variables, sums and nested decisions.
void BM_Memo2000Code(benchmark::State& state) {
  std::u16string memo = u"#";
  for (char16_t name = u'a'; memo.size() < 1900; name = name == u'z' ? u'a' : name + 1) {
    memo += std::u16string(1, name) + u"=(Persons+1)*2;";
    memo += u"if(" + std::u16string(1, name) + u">3){t=t+\"x\"}else{Length(SISubject)}";
  }
  Expand(state, memo + u"t#");
}
BENCHMARK(BM_Memo2000Code);

#ifdef MORVENLY_LUA

constexpr std::string_view kLuaChunk =
    "local out = '開始 ' .. SIStaDateTime .. ', 件名 ' .. SISubject .. '. '\n"
    "if SICategory1 == '仕事' then out = out .. 'W' else out = out .. 'P' end\n"
    "return out .. ' ' .. Persons * 1000 .. '人'";

// The fields are set, the chunk is loaded and run each time, in one state that lives on.
std::string ExpandInLua(lua_State* lua) {
  const auto set = [lua](const char* name, const char* text) {
    lua_pushstring(lua, text);
    lua_setglobal(lua, name);
  };
  set("SIStaDateTime", "2010/11/14 09:00:00");
  set("SISubject", "会議");
  set("SICategory1", "仕事");
  lua_pushinteger(lua, 3);
  lua_setglobal(lua, "Persons");
  if (luaL_loadbuffer(lua, kLuaChunk.data(), kLuaChunk.size(), "memo") != LUA_OK ||
      lua_pcall(lua, 0, 1, 0) != LUA_OK) {
    throw std::runtime_error(lua_tostring(lua, -1));
  }
  size_t length = 0;
  const char* text = lua_tolstring(lua, -1, &length);
  std::string shown(text, length);
  lua_pop(lua, 1);
  return shown;
}

void BM_TemplateLua(benchmark::State& state) {
  lua_State* lua = luaL_newstate();
  luaL_openlibs(lua);
  if (ExpandInLua(lua) != platform::ToUtf8(kExpansion)) state.SkipWithError("wrong expansion");
  for (auto _ : state) {
    std::string shown = ExpandInLua(lua);
    benchmark::DoNotOptimize(shown);
  }
  state.counters["expansions"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  lua_close(lua);
}
BENCHMARK(BM_TemplateLua);

#endif

}  // namespace

BENCHMARK_MAIN();
