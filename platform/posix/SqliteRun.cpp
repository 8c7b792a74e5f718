#include "platform/posix/SqliteRun.h"

#include <sqlite3.h>

#include <stdexcept>

#include "common/Utf.h"

namespace nv {

StatementRun::~StatementRun() { sqlite3_reset(statement_); }

StatementRun& StatementRun::Bind(int index, std::int64_t value) noexcept {
  const int rc = sqlite3_bind_int64(statement_, index, value);
  if (bindError_ == SQLITE_OK) bindError_ = rc;
  return *this;
}

StatementRun& StatementRun::BindText(int index, std::string_view utf8) noexcept {
  // Copied: names arrive as temporaries. A null pointer would bind NULL, not an empty text.
  const int rc = sqlite3_bind_text64(statement_, index, utf8.empty() ? "" : utf8.data(), utf8.size(), SQLITE_TRANSIENT,
                                     SQLITE_UTF8);
  if (bindError_ == SQLITE_OK) bindError_ = rc;
  return *this;
}

StatementRun& StatementRun::BindBlob(int index, std::span<const std::uint8_t> bytes) noexcept {
  static constexpr std::uint8_t kNothing = 0;
  const int rc =
      sqlite3_bind_blob64(statement_, index, bytes.empty() ? &kNothing : bytes.data(), bytes.size(), SQLITE_STATIC);
  if (bindError_ == SQLITE_OK) bindError_ = rc;
  return *this;
}

StatementRun& StatementRun::BindZeroBlob(int index, std::uint64_t size) noexcept {
  const int rc = sqlite3_bind_zeroblob64(statement_, index, size);
  if (bindError_ == SQLITE_OK) bindError_ = rc;
  return *this;
}

int StatementRun::Step() noexcept {
  if (bindError_ != SQLITE_OK) return bindError_;
  return sqlite3_step(statement_);
}

std::int64_t StatementRun::Int(int column) const noexcept { return sqlite3_column_int64(statement_, column); }

Text StatementRun::TextColumn(int column) const {
  Text text;
  TextColumnInto(column, text);
  return text;
}

void StatementRun::TextColumnInto(int column, Text& into) const {
  into.clear();
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
  if (bytes != nullptr) AppendFromUtf8(std::string_view(bytes, size), into);
}

std::span<const std::uint8_t> StatementRun::Blob(int column) const noexcept {
  const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement_, column));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
  if (bytes == nullptr) return {};
  return {bytes, size};
}

int Execute(sqlite3* db, const char* sql) noexcept { return sqlite3_exec(db, sql, nullptr, nullptr, nullptr); }

SqliteStatement Prepare(sqlite3* db, std::string_view sql) {
  sqlite3_stmt* raw = nullptr;
  const int rc =
      sqlite3_prepare_v3(db, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &raw, nullptr);
  SqliteStatement statement(raw);
  if (rc != SQLITE_OK) throw std::runtime_error(std::string("cannot prepare hive statement: ") + sqlite3_errmsg(db));
  return statement;
}

}  // namespace nv
