#include "platform/win32/dialog/GridSource.h"

#include "dialog/FlexGrid.h"
#include "dialog/StandardGrid.h"

namespace nv::win {
namespace {

// The editors' input mode that takes no typing (flags and previewed values).
constexpr std::int16_t kInputNone = 3;

}  // namespace

CellAlign AlignmentFromCode(std::int16_t code) {
  if (code < 0 || code > 8) return CellAlign::Left;
  return static_cast<CellAlign>(code / 3);
}

std::int32_t FlexGridSource::Rows() const { return grid_.Rows(); }
std::int32_t FlexGridSource::Cols() const { return grid_.Cols(); }
std::int32_t FlexGridSource::FixedRows() const { return grid_.FixedRows; }
std::int32_t FlexGridSource::FixedCols() const { return grid_.FixedCols; }
std::int32_t FlexGridSource::Row() const { return grid_.Row(); }
std::int32_t FlexGridSource::Col() const { return grid_.Col(); }
const Text& FlexGridSource::Cell(std::int32_t row, std::int32_t col) const { return grid_.TextMatrix(row, col); }
std::int32_t FlexGridSource::ColWidthTwips(std::int32_t col) const { return grid_.ColWidth(col); }

CellAlign FlexGridSource::Alignment(std::int32_t row, std::int32_t col) const {
  const std::int16_t cell = grid_.CellAlignmentAt(row, col);
  return AlignmentFromCode(cell != 0 ? cell : grid_.ColAlignment(col));
}

std::uint32_t FlexGridSource::BackColour(std::int32_t row, std::int32_t col) const {
  return grid_.CellBackColorAt(row, col);
}

bool FlexGridSource::HasPlusMinus() const { return grid_.ShowPlusMoins; }

bool FlexGridSource::CurrentTakesTyping() const {
  return grid_.Row() >= grid_.FixedRows && grid_.Col() >= grid_.FixedCols && grid_.InputMode != kInputNone;
}

void FlexGridSource::Enter(std::int32_t row, std::int32_t col) { grid_.EnterCell(row, col); }
void FlexGridSource::Edit(const Text& typed) { grid_.EditCell(typed); }
void FlexGridSource::Plus() { grid_.ClickPlus(); }
void FlexGridSource::Minus() { grid_.ClickMinus(); }

std::int32_t StandardGridSource::Rows() const { return grid_.Rows(); }
std::int32_t StandardGridSource::Cols() const { return grid_.Cols(); }
std::int32_t StandardGridSource::FixedRows() const { return grid_.FixedRows; }
std::int32_t StandardGridSource::FixedCols() const { return grid_.FixedCols; }
std::int32_t StandardGridSource::Row() const { return grid_.Row(); }
std::int32_t StandardGridSource::Col() const { return grid_.Col(); }
const Text& StandardGridSource::Cell(std::int32_t row, std::int32_t col) const { return grid_.TextMatrix(row, col); }
std::int32_t StandardGridSource::ColWidthTwips(std::int32_t col) const { return grid_.ColWidth(col); }

void StandardGridSource::Enter(std::int32_t row, std::int32_t col) {
  grid_.SetRow(row);
  grid_.SetCol(col);
}

}  // namespace nv::win
