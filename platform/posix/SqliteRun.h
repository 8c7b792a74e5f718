#pragma once
// One run of a cached prepared statement: binds, steps, reads columns, and resets the
// statement on the way out so that no read transaction stays open behind a caller's back.
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "common/Text.h"
#include "platform/posix/SqliteHandles.h"

namespace nv {

class StatementRun {
 public:
  explicit StatementRun(const SqliteStatement& statement) noexcept : statement_(statement.get()) {}
  StatementRun(const StatementRun&) = delete;
  StatementRun& operator=(const StatementRun&) = delete;
  ~StatementRun();

  // Parameters count from 1. A failed bind is kept and returned by the next Step. Text is
  // copied; blobs must outlive the run.
  StatementRun& Bind(int index, std::int64_t value) noexcept;
  StatementRun& BindText(int index, std::string_view utf8) noexcept;
  StatementRun& BindBlob(int index, std::span<const std::uint8_t> bytes) noexcept;
  // A blob of `size` zero bytes that costs no memory, to be written in place afterwards.
  StatementRun& BindZeroBlob(int index, std::uint64_t size) noexcept;

  // SQLITE_ROW, SQLITE_DONE or an (extended) error code.
  int Step() noexcept;

  std::int64_t Int(int column) const noexcept;
  Text TextColumn(int column) const;
  // The same into `into`, replacing what it held: a loop over rows keeps one buffer.
  void TextColumnInto(int column, Text& into) const;
  std::span<const std::uint8_t> Blob(int column) const noexcept;

 private:
  sqlite3_stmt* statement_;
  int bindError_ = 0;
};

// Runs SQL without results (pragmas, BEGIN, schema); returns the SQLite result code.
int Execute(sqlite3* db, const char* sql) noexcept;

// Prepares a statement that lives as long as the connection.
SqliteStatement Prepare(sqlite3* db, std::string_view sql);

}  // namespace nv
