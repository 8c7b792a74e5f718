#pragma once
// Control identifiers of the task dialog's windows: unique in the whole dialog, so that a
// tool (or a test) finds each control by its identifier alone.
namespace nv::win::ids {

constexpr int kTabs = 100;
constexpr int kValider = 101;
constexpr int kAppliquer = 102;
constexpr int kAnnuler = 103;
constexpr int kHelp = 104;
constexpr int kFirstPage = 90;  // pages 90 to 95, one per tab

// Tab 0.
constexpr int kLabel5 = 110;
constexpr int kTxtTache = 111;
constexpr int kFrame1 = 112;
constexpr int kLabel1 = 113;
constexpr int kCbFonction = 114;
constexpr int kPicture1 = 115;

// The editors: a base per editor, plus the control's offset.
constexpr int kSplit = 200;
constexpr int kExtraction = 300;
constexpr int kRecherche = 400;

constexpr int kLblChaine = 0;
constexpr int kTxtChaine = 1;
constexpr int kBtnCalculeValeurChaine = 2;
constexpr int kLblValeurChaine = 3;
constexpr int kLblResultatChaine = 4;
constexpr int kLblSeparator = 5;
constexpr int kTxtSeparator = 6;
constexpr int kBtnCalculeValeurSeparator = 7;
constexpr int kLblResultSeparator = 8;
constexpr int kSeparator0 = 10;  // to 18
constexpr int kLblTableau = 20;
constexpr int kTxtFieldsCount = 21;
constexpr int kUpDown1 = 22;
constexpr int kBtnClear = 23;
constexpr int kBtnPreview = 24;
constexpr int kGrid = 25;
constexpr int kMCheckBox = 26;
constexpr int kLblMasque = 30;
constexpr int kTxtMasque = 31;
constexpr int kLblValeurMasque = 32;
constexpr int kBtnCalculeValeurMasque = 33;
constexpr int kLblResultatMasque = 34;
constexpr int kLblFiltre = 35;
constexpr int kTxtFiltre = 36;
constexpr int kFrameOptions = 37;
constexpr int kChkCaseSensitive = 38;
constexpr int kChkTrim = 39;

// Tabs 4 and 5.
constexpr int kTxtComm = 500;
constexpr int kGrdAc = 600;
constexpr int kCmdAcA = 601;
constexpr int kCmdAcM = 602;
constexpr int kCmdAcS = 603;

}  // namespace nv::win::ids
