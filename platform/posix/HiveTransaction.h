#pragma once
// A write of several statements: a transaction of its own, or a savepoint inside a batch,
// so that it lands whole or not at all either way.
struct sqlite3;

namespace nv {

class HiveTransaction {
 public:
  HiveTransaction(sqlite3* db, bool insideBatch) noexcept : db_(db), nested_(insideBatch) {}
  HiveTransaction(const HiveTransaction&) = delete;
  HiveTransaction& operator=(const HiveTransaction&) = delete;
  ~HiveTransaction();

  // SQLite result codes.
  int Begin() noexcept;
  int Commit() noexcept;

 private:
  sqlite3* db_;
  bool nested_;
  bool open_ = false;
};

}  // namespace nv
