// Connecting makes the engine and hangs the tables from it; disconnecting takes both away.
#include "store/session.h"

#include <utility>

#include "platform/device_paths.h"
#include "platform/files.h"
#include "platform/host.h"
#include "store/foreign_log.h"
#include "store/schema.h"
#include "store/trouble.h"

namespace store {
namespace {

// Locked first: a log that another program of ours is writing is no foreign one.
std::unique_ptr<Engine> OpenEngine(std::u16string_view path) {
  std::unique_ptr<FileLock> lock = FileLock::Take(platform::ToHostPath(path).value_or(""));
  if (!lock || (HasForeignLog(path) && !SetLogAside(path))) {
    NoteTrouble(lock ? Trouble::kForeignLog : Trouble::kInUse);
    return nullptr;
  }
  std::unique_ptr<Engine> engine = Engine::Open(path, std::move(lock));
  if (engine && dbSession().SettleDisplaced) engine->OnDisplaced(dbSession().SettleDisplaced);
  if (engine && dbSession().BeforeWrite) engine->OnWrite(dbSession().BeforeWrite);
  return engine;
}

bool EngineAvailable() {
  if (Engine::Available()) return true;
  platform::ShowNotice(u"SQL Server がインストールされていません。", u"環境不正",
                       platform::Icon::kNone);
  return false;
}

void MakeTables() {
  CDbSession& session = dbSession();
  Engine& engine = *session.Session;
  session.UserTable = std::make_unique<CUserDataTable>(engine);
  session.LongTable = std::make_unique<CNamedValueTable>(engine, kLongDataTable);
  session.TextTable = std::make_unique<CNamedValueTable>(engine, kTextDataTable);
  session.SysInfoTable = std::make_unique<CNamedValueTable>(engine, kSysInfoTable);
  session.RcdrTable = std::make_unique<CRcdrDataTable>(engine);
  session.Starts = std::make_unique<SortedStarts>(engine);
}

// In one transaction: a dozen commits in a row would be felt on a slow card.
HRESULT MakeSchema(Engine& engine) {
  const HRESULT begun = engine.BeginTransaction();
  if (Failed(begun)) return begun;
  for (const TableStatements& table : kTableStatements) {
    engine.Execute(table.drop);  // fails on a new file, as it should
    HRESULT result = engine.Execute(table.create);
    if (!Failed(result)) result = engine.Execute(table.index);
    if (Failed(result)) return result;
  }
  return engine.Commit();
}

}  // namespace

CDbSession& dbSession() {
  static CDbSession session;
  return session;
}

HRESULT ConnectDataFile(std::u16string_view path) {
  DisconnectDataFile();
  NoteTrouble(Trouble::kUnknown);
  if (!EngineAvailable()) return E_FAIL;
  dbSession().Session = OpenEngine(path);
  if (!dbSession().Session) return E_FAIL;
  MakeTables();
  return S_OK;
}

HRESULT CreateEmptyDataFile(std::u16string_view path) {
  DisconnectDataFile();
  NoteTrouble(Trouble::kUnknown);
  Engine::Remove(path);
  if (!EngineAvailable()) return E_FAIL;
  // Made here and not by the engine, because files() makes it its owner's alone.
  if (!platform::files().CreateInPlace(path)) return E_FAIL;
  dbSession().Session = OpenEngine(path);
  const HRESULT result = dbSession().Session ? MakeSchema(*dbSession().Session) : E_FAIL;
  if (Failed(result)) {
    DisconnectDataFile();
  } else {
    MakeTables();
  }
  return result;
}

HRESULT MoveToDataFile(std::u16string_view path) {
  Engine& engine = *dbSession().Session;
  engine.Close();
  const std::unique_ptr<Engine> other = OpenEngine(path);
  if (!other) return E_FAIL;
  engine.Become(*other);
  return S_OK;
}

void PrepareToWrite() {
  const CDbSession& session = dbSession();
  if (!session.Session) return;
  session.Session->PrepareJournal();
  session.Starts->Refresh();
}

void DisconnectDataFile() {
  CDbSession& session = dbSession();
  session.UserTable.reset();
  session.LongTable.reset();
  session.TextTable.reset();
  session.SysInfoTable.reset();
  session.RcdrTable.reset();
  if (session.Starts) session.Starts->Keep();
  session.Starts.reset();
  session.Session.reset();
}

HRESULT AlterUserData() {
  if (!dbSession().Session) return E_POINTER;
  for (const std::u16string_view statement : kAlterStatements) {
    const HRESULT result = dbSession().Session->Execute(statement);
    if (Failed(result)) return result;
  }
  return S_OK;
}

}  // namespace store
