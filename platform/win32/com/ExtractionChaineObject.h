#pragma once
// The COM class ExtractionChaine: the 39 slots of _ExtractionChaine in the host's order,
// dispatch through the type library, the Complete event on a connection point, class
// information and error information. Every member hands over to the portable core.
#include <windows.h>
#include <ocidl.h>
#include <wrl/client.h>

#include "NVExtractionChaine.h"
#include "platform/win32/com/EventSinks.h"
#include "platform/win32/com/TypeLibrary.h"
#include "plugin/ExtractionChaine.h"

namespace nv::com {

class ExtractionChaineObject : public _ExtractionChaine,
                               public IConnectionPointContainer,
                               public IProvideClassInfo2,
                               public ISupportErrorInfo {
 public:
  // Raises a run-time error when the type library or the core cannot be set up.
  ExtractionChaineObject();
  ~ExtractionChaineObject() = default;
  ExtractionChaineObject(const ExtractionChaineObject&) = delete;
  ExtractionChaineObject& operator=(const ExtractionChaineObject&) = delete;

  void* FindInterface(REFIID iid) noexcept;

  // IDispatch
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params, VARIANT* result,
                      EXCEPINFO* exception, UINT* argumentError) override;

  // _ExtractionChaine, slot by slot
  STDMETHODIMP get_Nom(BSTR* value) override;                                  // 1
  STDMETHODIMP put_Nom(BSTR value) override;                                   // 2
  STDMETHODIMP get_Regst(LONG* value) override;                                // 3
  STDMETHODIMP put_Regst(LONG value) override;                                 // 4
  STDMETHODIMP get_RegstCle(BSTR* value) override;                             // 5
  STDMETHODIMP put_RegstCle(BSTR value) override;                              // 6
  STDMETHODIMP get_Etat(short* value) override;                                // 7
  STDMETHODIMP put_Etat(short value) override;                                 // 8
  STDMETHODIMP get_Rapport(BSTR* value) override;                              // 9
  STDMETHODIMP put_Rapport(BSTR value) override;                               // 10
  STDMETHODIMP get_Scen(BSTR* value) override;                                 // 11
  STDMETHODIMP put_Scen(BSTR value) override;                                  // 12
  STDMETHODIMP get_Bouton(IDispatch** value) override;                         // 13
  STDMETHODIMP put_Bouton(IDispatch* value) override;                          // 14
  STDMETHODIMP putref_Bouton(IDispatch* value) override;                       // 15
  STDMETHODIMP RunT(short data) override;                                      // 16
  STDMETHODIMP put_Run(short data) override;                                   // 17
  STDMETHODIMP GetTaskDescription(BSTR* description) override;                 // 18
  STDMETHODIMP Affiche(short* result) override;                                // 19
  STDMETHODIMP IsTrigger(VARIANT_BOOL* trigger) override;                      // 20
  STDMETHODIMP IsActionSupported(LONG* actionType, VARIANT_BOOL* supported) override;  // 21
  STDMETHODIMP ShowWrapper(LONG* workingMode) override;                        // 22
  STDMETHODIMP GetPicture(IPictureDisp** picture) override;                    // 23
  STDMETHODIMP GetStatus(LONG* status) override;                               // 24
  STDMETHODIMP GetSummary(BSTR* summary) override;                             // 25
  STDMETHODIMP GetTitle(BSTR* title) override;                                 // 26
  STDMETHODIMP GetWrapperType(LONG* wrapperType) override;                     // 27
  STDMETHODIMP GetActions(BSTR* actions) override;                             // 28
  STDMETHODIMP GetWorkingMode(LONG* workingMode) override;                     // 29
  STDMETHODIMP GetName(BSTR* name) override;                                   // 30
  STDMETHODIMP SetLanguage(LONG* language) override;                           // 31
  STDMETHODIMP SetName(BSTR* name) override;                                   // 32
  STDMETHODIMP SetRegistryRoot(LONG* root) override;                           // 33
  STDMETHODIMP SetRegistrySubKey(BSTR* subKey) override;                       // 34
  STDMETHODIMP SetReportFilePath(BSTR* path) override;                         // 35
  STDMETHODIMP SetScenario(BSTR* scenario) override;                           // 36
  STDMETHODIMP SetWorkingMode(LONG* mode) override;                            // 37
  STDMETHODIMP ExecuteTache() override;                                        // 38
  STDMETHODIMP InitializeProperties(BSTR* name, BSTR* scenario, LONG* language) override;  // 39

  // IConnectionPointContainer
  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
  STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

  // IProvideClassInfo2
  STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
  STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override;

  // ISupportErrorInfo
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override;

 private:
  template <typename Body>
  HRESULT Member(Body&& body) noexcept;
  // A new connection point of the event interface; throws std::bad_alloc.
  Microsoft::WRL::ComPtr<IConnectionPoint> MakeEventPoint();

  PluginTypeInfo typeInfo_;
  EventSinks sinks_;
  ExtractionChaine core_;
};

}  // namespace nv::com
