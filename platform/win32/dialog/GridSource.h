#pragma once
// What a grid window shows and where the user's actions on it go: one view over the
// editors' grid and over the actions tab's standard grid.
#include <cstdint>

#include "common/Text.h"

namespace nv {
class FlexGrid;
class StandardGrid;
}  // namespace nv

namespace nv::win {

// Horizontal placement of a cell's text.
enum class CellAlign { Left, Centre, Right };

class GridSource {
 public:
  virtual ~GridSource() = default;
  virtual std::int32_t Rows() const = 0;
  virtual std::int32_t Cols() const = 0;
  virtual std::int32_t FixedRows() const = 0;
  virtual std::int32_t FixedCols() const = 0;
  virtual std::int32_t Row() const = 0;
  virtual std::int32_t Col() const = 0;
  virtual const Text& Cell(std::int32_t row, std::int32_t col) const = 0;
  virtual std::int32_t ColWidthTwips(std::int32_t col) const = 0;
  virtual CellAlign Alignment(std::int32_t row, std::int32_t col) const = 0;
  // 0 for the grid's default; otherwise a colour as the grid takes them (a system colour
  // when the high bit is set).
  virtual std::uint32_t BackColour(std::int32_t row, std::int32_t col) const = 0;
  virtual bool HasPlusMinus() const = 0;
  // The current cell takes typing (asked after entering it).
  virtual bool CurrentTakesTyping() const = 0;

  virtual void Enter(std::int32_t row, std::int32_t col) = 0;
  virtual void Edit(const Text& typed) = 0;
  virtual void Plus() = 0;
  virtual void Minus() = 0;
};

// Alignment codes of the grid (0 to 8, column by column of three) as a placement; 0 and
// anything unknown read as the column's, then as left.
CellAlign AlignmentFromCode(std::int16_t code);

class FlexGridSource final : public GridSource {
 public:
  explicit FlexGridSource(FlexGrid& grid) : grid_(grid) {}
  std::int32_t Rows() const override;
  std::int32_t Cols() const override;
  std::int32_t FixedRows() const override;
  std::int32_t FixedCols() const override;
  std::int32_t Row() const override;
  std::int32_t Col() const override;
  const Text& Cell(std::int32_t row, std::int32_t col) const override;
  std::int32_t ColWidthTwips(std::int32_t col) const override;
  CellAlign Alignment(std::int32_t row, std::int32_t col) const override;
  std::uint32_t BackColour(std::int32_t row, std::int32_t col) const override;
  bool HasPlusMinus() const override;
  bool CurrentTakesTyping() const override;
  void Enter(std::int32_t row, std::int32_t col) override;
  void Edit(const Text& typed) override;
  void Plus() override;
  void Minus() override;

 private:
  FlexGrid& grid_;
};

// The actions grid is shown and its current cell chosen; it takes no typing.
class StandardGridSource final : public GridSource {
 public:
  explicit StandardGridSource(StandardGrid& grid) : grid_(grid) {}
  std::int32_t Rows() const override;
  std::int32_t Cols() const override;
  std::int32_t FixedRows() const override;
  std::int32_t FixedCols() const override;
  std::int32_t Row() const override;
  std::int32_t Col() const override;
  const Text& Cell(std::int32_t row, std::int32_t col) const override;
  std::int32_t ColWidthTwips(std::int32_t col) const override;
  CellAlign Alignment(std::int32_t, std::int32_t) const override { return CellAlign::Left; }
  std::uint32_t BackColour(std::int32_t, std::int32_t) const override { return 0; }
  bool HasPlusMinus() const override { return false; }
  bool CurrentTakesTyping() const override { return false; }
  void Enter(std::int32_t row, std::int32_t col) override;
  void Edit(const Text&) override {}
  void Plus() override {}
  void Minus() override {}

 private:
  StandardGrid& grid_;
};

}  // namespace nv::win
