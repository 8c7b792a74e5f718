#include "tests/windialog/WindowPictures.h"

#include <commctrl.h>

#include <filesystem>
#include <sstream>

#include "platform/win32/dialog/WindowHandles.h"
#include "tests/windialog/PngFile.h"

namespace nv::uitest {
namespace {

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

std::wstring TextOf(HWND window) {
  wchar_t text[512] = {};
  GetWindowTextW(window, text, 512);
  return text;
}

std::string Describe(HWND window) {
  std::ostringstream out;
  const std::wstring name = ClassOf(window);
  const std::wstring text = TextOf(window);
  out << "control " << GetDlgCtrlID(window) << " (" << std::string(name.begin(), name.end()) << ", \"";
  for (const wchar_t c : text) out << (c < 128 ? static_cast<char>(c) : '?');
  out << "\")";
  return out.str();
}

RECT RectIn(HWND window, HWND parent) {
  RECT rect{};
  GetWindowRect(window, &rect);
  MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rect), 2);
  return rect;
}

LONG_PTR StyleOf(HWND window) { return GetWindowLongPtrW(window, GWL_STYLE); }

bool IsButtonOfType(HWND window, LONG_PTR type) {
  return ClassOf(window) == L"Button" && (StyleOf(window) & BS_TYPEMASK) == type;
}

bool IsGroupBox(HWND window) { return IsButtonOfType(window, BS_GROUPBOX); }

bool Contains(const RECT& outer, const RECT& inner) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right && inner.bottom <= outer.bottom;
}

std::vector<HWND> VisibleChildren(HWND parent) {
  std::vector<HWND> children;
  for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (IsWindowVisible(child)) children.push_back(child);
  }
  return children;
}

// The caption as drawn: a control that takes accelerators shows "&x" as an underlined x.
std::wstring Drawn(HWND window, const std::wstring& text) {
  const bool prefixes = ClassOf(window) == L"Button" || (ClassOf(window) == L"Static" && !(StyleOf(window) & SS_NOPREFIX));
  if (!prefixes) return text;
  std::wstring drawn;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'&' && i + 1 < text.size()) ++i;
    drawn += text[i];
  }
  return drawn;
}

SIZE Measure(HWND window, const std::wstring& text) {
  SIZE size{};
  const win::WindowDc dc(window);
  const win::SelectedObject font(dc.get(), reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
  GetTextExtentPoint32W(dc.get(), text.c_str(), static_cast<int>(text.size()), &size);
  return size;
}

void CheckCaption(HWND control, std::vector<std::string>& problems) {
  const std::wstring name = ClassOf(control);
  const std::wstring text = TextOf(control);
  if (text.empty() || (name != L"Static" && name != L"Button")) return;
  if (name == L"Static" && (StyleOf(control) & SS_TYPEMASK) == SS_ICON) return;
  if (name == L"Static" && (StyleOf(control) & SS_ENDELLIPSIS)) return;  // a value box shows its cut with "…"
  RECT client{};
  GetClientRect(control, &client);
  int room = client.right;
  if (IsButtonOfType(control, BS_CHECKBOX) || IsButtonOfType(control, BS_AUTOCHECKBOX) || IsButtonOfType(control, BS_3STATE) ||
      IsButtonOfType(control, BS_AUTO3STATE) || IsButtonOfType(control, BS_RADIOBUTTON) ||
      IsButtonOfType(control, BS_AUTORADIOBUTTON)) {
    room -= GetSystemMetrics(SM_CXMENUCHECK) + 4;
  } else if (IsGroupBox(control)) {
    room -= 16;
  } else if (name == L"Button") {
    room -= 8;
  }
  const SIZE size = Measure(control, Drawn(control, text));
  if (size.cx > room) problems.push_back(Describe(control) + " caption is " + std::to_string(size.cx) + " px wide, room " + std::to_string(room));
  if (!IsGroupBox(control) && size.cy > client.bottom) {
    problems.push_back(Describe(control) + " caption is " + std::to_string(size.cy) + " px tall, room " + std::to_string(client.bottom));
  }
}

void CheckListEntries(HWND combo, std::vector<std::string>& problems) {
  if (ClassOf(combo) != L"ComboBox") return;
  RECT client{};
  GetClientRect(combo, &client);
  const int room = client.right - GetSystemMetrics(SM_CXVSCROLL) - 6;
  const auto count = static_cast<int>(SendMessageW(combo, CB_GETCOUNT, 0, 0));
  for (int i = 0; i < count; ++i) {
    wchar_t entry[256] = {};
    SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(entry));
    if (Measure(combo, entry).cx > room) problems.push_back(Describe(combo) + " entry " + std::to_string(i) + " does not fit");
  }
}

void CheckSiblings(HWND parent, int overlayId, std::vector<std::string>& problems) {
  RECT area{};
  GetClientRect(parent, &area);
  const std::vector<HWND> children = VisibleChildren(parent);
  for (const HWND child : children) {
    const RECT rect = RectIn(child, parent);
    if (!Contains(area, rect)) problems.push_back(Describe(child) + " lies outside its parent");
    CheckCaption(child, problems);
    CheckListEntries(child, problems);
  }
  for (std::size_t i = 0; i < children.size(); ++i) {
    for (std::size_t j = i + 1; j < children.size(); ++j) {
      const HWND a = children[i];
      const HWND b = children[j];
      const RECT ra = RectIn(a, parent);
      const RECT rb = RectIn(b, parent);
      RECT common{};
      if (!IntersectRect(&common, &ra, &rb)) continue;
      if ((IsGroupBox(a) && Contains(ra, rb)) || (IsGroupBox(b) && Contains(rb, ra))) continue;
      const bool pageOverTabs = ClassOf(a) == WC_TABCONTROLW || ClassOf(b) == WC_TABCONTROLW;
      const bool overlay = GetDlgCtrlID(a) == overlayId || GetDlgCtrlID(b) == overlayId;
      if (pageOverTabs || overlay) continue;
      problems.push_back(Describe(a) + " overlaps " + Describe(b));
    }
  }
}

}  // namespace

std::string PicturesFolder() {
  wchar_t program[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  const std::filesystem::path folder = std::filesystem::path(program).parent_path() / "screenshots";
  std::filesystem::create_directories(folder);
  return folder.string();
}

// What `source` shows of `width` by `height` from `origin`, as PNG.
static bool SaveDcPicture(HDC source, POINT origin, int width, int height, const std::string& path) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // top row first
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  const win::unique_memory_dc memory(CreateCompatibleDC(source));
  const win::unique_hbitmap bitmap(CreateDIBSection(memory.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  RgbImage image{width, height, {}};
  {
    const win::SelectedObject selected(memory.get(), bitmap.get());
    if (!BitBlt(memory.get(), 0, 0, width, height, source, origin.x, origin.y, SRCCOPY)) return false;
    GdiFlush();
    const auto* pixels = static_cast<const std::uint8_t*>(bits);
    for (int i = 0; i < width * height; ++i) {
      image.rgb.push_back(pixels[i * 4 + 2]);
      image.rgb.push_back(pixels[i * 4 + 1]);
      image.rgb.push_back(pixels[i * 4]);
    }
  }
  return WritePng(path, image);
}

bool SaveWindowPicture(HWND window, const std::string& path) {
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
  RECT bounds{};
  GetWindowRect(window, &bounds);
  const win::WindowDc source(window, true);
  return SaveDcPicture(source.get(), {0, 0}, bounds.right - bounds.left, bounds.bottom - bounds.top, path);
}

bool SaveScreenPicture(const RECT& area, const std::string& path) {
  const win::WindowDc screen(nullptr);
  return SaveDcPicture(screen.get(), {area.left, area.top}, area.right - area.left, area.bottom - area.top, path);
}

std::vector<std::string> LayoutProblems(HWND dialog, HWND page, int overlayId) {
  std::vector<std::string> problems;
  RECT bounds{};
  GetWindowRect(dialog, &bounds);
  if (bounds.right - bounds.left > 800 || bounds.bottom - bounds.top > 600) problems.push_back("the dialog is larger than 800 by 600");
  CheckSiblings(dialog, overlayId, problems);
  if (page) CheckSiblings(page, overlayId, problems);
  for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (ClassOf(child) == WC_TABCONTROLW && SendMessageW(child, TCM_GETROWCOUNT, 0, 0) > 1) {
      problems.push_back("the tab captions take more than one row");
    }
  }
  return problems;
}

}  // namespace nv::uitest
