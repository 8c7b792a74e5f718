#include "tests/com/InterfaceTable.h"

namespace nv::comtest {

std::span<const TableSlot> InterfaceTable() {
  constexpr auto get = INVOKE_PROPERTYGET;
  constexpr auto put = INVOKE_PROPERTYPUT;
  constexpr auto putref = INVOKE_PROPERTYPUTREF;
  constexpr auto method = INVOKE_FUNC;
  static const std::vector<TableSlot> table = {
      {1, L"Nom", get, 0x40030000, true, {"out,retval BSTR*"}},
      {2, L"Nom", put, 0x40030000, true, {"in BSTR"}},
      {3, L"Regst", get, 0x40030001, true, {"out,retval long*"}},
      {4, L"Regst", put, 0x40030001, true, {"in long"}},
      {5, L"RegstCle", get, 0x40030002, true, {"out,retval BSTR*"}},
      {6, L"RegstCle", put, 0x40030002, true, {"in BSTR"}},
      {7, L"Etat", get, 0x40030003, true, {"out,retval short*"}},
      {8, L"Etat", put, 0x40030003, true, {"in short"}},
      {9, L"Rapport", get, 0x40030004, true, {"out,retval BSTR*"}},
      {10, L"Rapport", put, 0x40030004, true, {"in BSTR"}},
      {11, L"Scen", get, 0x40030005, true, {"out,retval BSTR*"}},
      {12, L"Scen", put, 0x40030005, true, {"in BSTR"}},
      {13, L"Bouton", get, 0x40030006, true, {"out,retval IDispatch**"}},
      {14, L"Bouton", put, 0x40030006, false, {"in IDispatch*"}},
      {15, L"Bouton", putref, 0x40030006, true, {"in IDispatch*"}},
      {16, L"RunT", method, 0x60030003, true, {"in short"}},
      {17, L"Run", put, 0x68030000, true, {"in short"}},
      {18, L"GetTaskDescription", method, 0x60030005, true, {"out,retval BSTR*"}},
      {19, L"Affiche", method, 0x60030007, true, {"out,retval short*"}},
      {20, L"IsTrigger", method, 0x60030009, true, {"out,retval VARIANT_BOOL*"}},
      {21, L"IsActionSupported", method, 0x6003000A, true, {"in,out long*", "out,retval VARIANT_BOOL*"}},
      {22, L"ShowWrapper", method, 0x6003000B, true, {"out,retval long*"}},
      {23, L"GetPicture", method, 0x6003000C, true, {"out,retval Picture**"}},
      {24, L"GetStatus", method, 0x6003000D, true, {"out,retval long*"}},
      {25, L"GetSummary", method, 0x6003000E, true, {"out,retval BSTR*"}},
      {26, L"GetTitle", method, 0x6003000F, true, {"out,retval BSTR*"}},
      {27, L"GetWrapperType", method, 0x60030010, true, {"out,retval long*"}},
      {28, L"GetActions", method, 0x60030011, true, {"out,retval BSTR*"}},
      {29, L"GetWorkingMode", method, 0x60030012, true, {"out,retval long*"}},
      {30, L"GetName", method, 0x60030013, true, {"out,retval BSTR*"}},
      {31, L"SetLanguage", method, 0x60030014, true, {"in,out long*"}},
      {32, L"SetName", method, 0x60030015, true, {"in,out BSTR*"}},
      {33, L"SetRegistryRoot", method, 0x60030016, true, {"in,out long*"}},
      {34, L"SetRegistrySubKey", method, 0x60030017, true, {"in,out BSTR*"}},
      {35, L"SetReportFilePath", method, 0x60030018, true, {"in,out BSTR*"}},
      {36, L"SetScenario", method, 0x60030019, true, {"in,out BSTR*"}},
      {37, L"SetWorkingMode", method, 0x6003001A, true, {"in,out long*"}},
      {38, L"ExecuteTache", method, 0x6003001F, true, {}},
      {39, L"InitializeProperties", method, 0x60030024, true, {"in,out BSTR*", "in,out BSTR*", "in,out long*"}},
  };
  return table;
}

}  // namespace nv::comtest
