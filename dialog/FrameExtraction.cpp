#include "dialog/FrameExtraction.h"

#include "common/Conversions.h"
#include "common/Error.h"
#include "engine/ExtractPieces.h"
#include "engine/PieceCut.h"
#include "plugin/ErrorLine.h"
#include "plugin/VariableAccess.h"
#include "store/Texts.h"

namespace nv {
namespace {

constexpr std::int16_t kInputNames = 2;
constexpr std::int16_t kInputPositions = 1;
constexpr std::int16_t kInputNone = 3;

}  // namespace

FrameExtraction::FrameExtraction(UiServices& ui) : EditorBase(ui) {
  FlexGrid& grid = NovraFlexGrid1;
  grid.TextBoxMode = 2;
  grid.NumeroteLignes = false;
  grid.ShowInsertMenus = false;
  grid.ShowMonterDescendre = false;
  grid.AllowInsertKey = false;
  mCheckBox.Height = 195;
  txtChaine.OnChange = [this] { MajBoutons(); };
  txtSeparator.OnChange = [this] { MajBoutons(); };
  btnCalculeValeurSeparator.OnClick = [this] { CalculeValeur(txtSeparator, lblResultSeparator); };
  btnPreview.OnClick = [this] { btnPreview_Click(); };
  btnClear.OnClick = [this] {
    for (std::int32_t i = 1; i < NovraFlexGrid1.Cols(); ++i) NovraFlexGrid1.SetTextMatrix(ExtractionRow::Variable, i, {});
  };
  grid.OnCellEntered = [this] { NovraFlexGrid1_EnterCell(); };
  grid.OnColumnAdded = [this] { NovraFlexGrid1_ColumnAdded(); };
  grid.OnColumnRemoved = [this] { MajBoutons(); };
  mCheckBox.OnClick = [this] { mCheckBox_Click(); };
  SurveilleCellulesVariables(
      [this] { return NovraFlexGrid1.Row() == ExtractionRow::Variable && NovraFlexGrid1.Col() >= 1; });
  InitTexte();
}

void FrameExtraction::SetScenario(const Text& scenario) { DonneScenario(scenario, {&txtChaine, &txtSeparator}); }

void FrameExtraction::InitTexte() {
  lblChaine.Caption = LoadText(TextId::StringLabel);
  lblValeurChaine.Caption = LoadText(TextId::ValueLabel);
  lblResultatChaine.Caption.clear();
  LegendesSeparateur();
  SetSeparateur(Text(u";"));
  lblResultSeparator.Caption.clear();

  FlexGrid& grid = NovraFlexGrid1;
  grid.FixedRows = 0;
  grid.FixedCols = 1;
  grid.SetRows(5);
  grid.SetCols(1);
  grid.SetColWidth(0, 2000);
  grid.SetColAlignment(0, CellAlignment::LeftCenter);
  grid.SetCol(0);
  grid.SetRow(ExtractionRow::Variable);
  grid.Inner().SetCellAlignment(CellAlignment::CenterCenter);
  grid.SetTextMatrix(ExtractionRow::Variable, 0, LoadText(TextId::VariableRowHeading));
  constexpr TextId kPositionHeadings[] = {TextId::StartRowHeading, TextId::EndRowHeading,
                                          TextId::ShowSeparatorsRowHeading};
  for (std::int32_t row = ExtractionRow::Start; row <= ExtractionRow::ShowSep; ++row) {
    grid.SetColWidth(row, 1000);
    grid.SetColAlignment(row, CellAlignment::CenterCenter);
    grid.SetTextMatrix(row, 0, LoadText(kPositionHeadings[row - ExtractionRow::Start]));
  }
  grid.SetColWidth(4, 2500);
  grid.SetColAlignment(4, CellAlignment::LeftCenter);
  grid.SetCol(0);
  grid.SetRow(ExtractionRow::Value);
  grid.Inner().SetCellAlignment(CellAlignment::CenterCenter);
  grid.SetTextMatrix(ExtractionRow::Value, 0, LoadText(TextId::ValueRowHeading));

  mCheckBox.Visible = false;
  btnClear.Caption = LoadText(TextId::ClearButton);
  btnPreview.Caption = LoadText(TextId::PreviewButton);
  MajBoutons();
}

bool FrameExtraction::Verification() {
  if (txtChaine.GetText().empty()) return Echec(TextId::StringMissingMessage, txtChaine);
  if (txtSeparator.GetText().empty()) return Echec(TextId::SeparatorMissingMessage, txtSeparator);
  for (std::int32_t i = 1; i < NovraFlexGrid1.Cols(); ++i) {
    if (NovraFlexGrid1.TextMatrix(ExtractionRow::Start, i).empty() ||
        NovraFlexGrid1.TextMatrix(ExtractionRow::End, i).empty()) {
      return Echec(TextId::IncorrectValueMessage, txtSeparator);
    }
  }
  return true;
}

void FrameExtraction::MajBoutons() {
  const bool chaine = !txtChaine.GetText().empty();
  const bool separateur = !txtSeparator.GetText().empty();
  btnCalculeValeurChaine.Enabled = chaine;
  btnCalculeValeurSeparator.Enabled = separateur;
  btnPreview.Enabled = NovraFlexGrid1.Cols() > 1 && chaine && separateur;
}

void FrameExtraction::NovraFlexGrid1_EnterCell() {
  FlexGrid& grid = NovraFlexGrid1;
  mCheckBox.Visible = false;
  switch (grid.Row()) {
    case ExtractionRow::Variable:
      grid.InputMode = kInputNames;
      grid.InputSetting = -1;
      break;
    case ExtractionRow::Start:
    case ExtractionRow::End:
      grid.InputMode = kInputPositions;
      grid.InputSetting = 1;
      break;
    case ExtractionRow::ShowSep:
      grid.InputMode = kInputNone;
      PlaceCheckBox();
      break;
    case ExtractionRow::Value:
      grid.InputMode = kInputNone;
      break;
    default:
      break;
  }
}

void FrameExtraction::PlaceCheckBox() {
  FlexGrid& grid = NovraFlexGrid1;
  const auto cellHeight = static_cast<std::int16_t>(grid.Inner().CellHeight());
  mCheckBox.Left = grid.Left + grid.Inner().CellLeft();
  mCheckBox.Top = grid.Top + grid.Inner().CellTop() + (cellHeight - mCheckBox.Height) / 2;
  const Text& flag = grid.TextMatrix(grid.Row(), grid.Col());
  mCheckBox.Value = flag == u"Vrai" || flag == u"True" ? 1 : 0;
  mCheckBox.Visible = true;
}

void FrameExtraction::mCheckBox_Click() {
  FlexGrid& grid = NovraFlexGrid1;
  grid.SetTextMatrix(grid.Row(), grid.Col(), BooleanText(mCheckBox.Value != 0));
  grid.Inner().SetCellAlignment(CellAlignment::CenterCenter);
}

void FrameExtraction::NovraFlexGrid1_ColumnAdded() {
  FlexGrid& grid = NovraFlexGrid1;
  const std::int32_t c = grid.Cols() - 1;
  grid.SetCol(c);
  grid.SetRow(ExtractionRow::ShowSep);
  grid.Inner().SetCellAlignment(CellAlignment::CenterCenter);
  grid.SetTextMatrix(ExtractionRow::Start, c, Text(u"0"));
  grid.SetTextMatrix(ExtractionRow::End, c, Text(u"0"));
  grid.SetTextMatrix(ExtractionRow::ShowSep, c, BooleanText(false));
  grid.SetRow(ExtractionRow::Value);
  grid.SetCellBackColor(kButtonFaceColour);
  MajBoutons();
}

std::vector<LigneExtraction> FrameExtraction::Lignes() const {
  std::vector<LigneExtraction> lignes;
  for (std::int32_t i = 1; i < NovraFlexGrid1.Cols(); ++i) {
    Text variable = Rogne(NovraFlexGrid1.TextMatrix(ExtractionRow::Variable, i));
    if (!IsVariableReference(variable)) variable.clear();
    lignes.push_back({std::move(variable), NovraFlexGrid1.TextMatrix(ExtractionRow::Start, i),
                      NovraFlexGrid1.TextMatrix(ExtractionRow::End, i),
                      NovraFlexGrid1.TextMatrix(ExtractionRow::ShowSep, i)});
  }
  return lignes;
}

void FrameExtraction::SetLignes(const std::vector<LigneExtraction>& lignes) {
  std::int32_t i = 1;
  for (const LigneExtraction& ligne : lignes) {
    NovraFlexGrid1.AddColumn();
    for (std::int32_t row = 0; row < 4; ++row) NovraFlexGrid1.SetTextMatrix(row, i, ligne[row]);
    ++i;
  }
}

void FrameExtraction::btnPreview_Click() {
  const Text chaine = Resout(txtChaine);
  const Text separateur = Resout(txtSeparator);
  // One cut serves every field, as at execution.
  const PieceCut cut(chaine, separateur, kPositionalReach);
  std::int16_t start = 0;
  std::int16_t end = 0;
  std::int32_t i = 1;
  for (const LigneExtraction& ligne : Lignes()) {
    Text value;
    try {
      if (IsNumeric(ligne[1])) start = ToInteger(ligne[1]);
      if (IsNumeric(ligne[2])) end = ToInteger(ligne[2]);
      value.assign(ExtractPieces(cut, start, end, ToBoolean(ligne[3])));
    } catch (const RuntimeError& error) {
      // The line execution would report for the same failure.
      value = ErrorLine(error.View());
    }
    NovraFlexGrid1.SetTextMatrix(ExtractionRow::Value, i++, value);
  }
  NovraFlexGrid1.Reset = false;
}

}  // namespace nv
