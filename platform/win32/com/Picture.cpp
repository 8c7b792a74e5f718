#include "platform/win32/com/Picture.h"

#include <olectl.h>

#include "common/Error.h"
#include "platform/win32/com/ComResult.h"
#include "platform/win32/com/ModuleLifetime.h"
#include "platform/win32/com/UniqueHandle.h"

namespace nv::com {

Microsoft::WRL::ComPtr<IPictureDisp> LoadBitmapPicture(const wchar_t* name) {
  unique_hbitmap bitmap(static_cast<HBITMAP>(LoadImageW(ThisModule(), name, IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR)));
  if (!bitmap) {
    const std::wstring wide(name);
    RaiseError(ErrorNumber::ResourceNotFound,
               u"Resource with identifier '" + Text(wide.begin(), wide.end()) + u"' not found");
  }
  PICTDESC description{};
  description.cbSizeofstruct = sizeof(description);
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = bitmap.get();
  Microsoft::WRL::ComPtr<IPictureDisp> picture;
  THROW_IF_FAILED_MSG(OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE,
                                               reinterpret_cast<void**>(picture.GetAddressOf())),
                      u"The picture cannot be created");
  bitmap.release();  // the picture owns it now
  return picture;
}

}  // namespace nv::com
