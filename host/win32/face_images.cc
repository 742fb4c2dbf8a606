#include "host/win32/face_images.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace scrivo::host {
namespace {

// Wine copies the pictures of a menu without regard to their alpha values.
bool MenusIgnoreAlpha() {
  HMODULE ntdll = GetModuleHandleA("ntdll.dll");
  return ntdll && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

// The picture on the background of menus.
std::vector<std::uint32_t> OnMenu(std::vector<std::uint32_t> pixels) {
  const COLORREF menu = GetSysColor(COLOR_MENU);
  const std::uint32_t background[] = {GetBValue(menu), GetGValue(menu), GetRValue(menu)};
  for (std::uint32_t& pixel : pixels) {
    const std::uint32_t uncovered = 255 - (pixel >> 24);
    std::uint32_t mixed = 0xFF000000;
    for (int channel = 0; channel < 3; ++channel) {
      const std::uint32_t colour = (pixel >> (8 * channel)) & 0xFF;
      mixed |= std::min(colour + background[channel] * uncovered / 255, 255u) << (8 * channel);
    }
    pixel = mixed;
  }
  return pixels;
}

HBITMAP MakeBitmap(const std::vector<std::uint32_t>& pixels, int size) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size;
  info.bmiHeader.biHeight = -size;  // top row first
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (!bitmap) return nullptr;
  std::memcpy(bits, pixels.data(), pixels.size() * sizeof pixels[0]);
  return bitmap;
}

}  // namespace

FaceImages::~FaceImages() {
  if (list_) ImageList_Destroy(list_);
  for (const auto& [face, bitmap] : menu_bitmaps_) DeleteObject(bitmap);
}

HBITMAP FaceImages::MenuBitmap(std::int32_t face_id) {
  const Face face = FaceOf(face_id);
  if (face == Face::kNone) return nullptr;
  const auto [place, is_new] = menu_bitmaps_.try_emplace(face);
  if (is_new) {
    const auto pixels = DrawFace(face, size_);
    place->second = MakeBitmap(MenusIgnoreAlpha() ? OnMenu(pixels) : pixels, size_);
  }
  return place->second;
}

HIMAGELIST FaceImages::List() {
  if (!list_) list_ = ImageList_Create(size_, size_, ILC_COLOR32, 4, 4);
  return list_;
}

int FaceImages::ListIndex(std::int32_t face_id) {
  const Face face = FaceOf(face_id);
  if (face == Face::kNone) return I_IMAGENONE;
  const auto [place, is_new] = indexes_.try_emplace(face);
  if (is_new) {
    HBITMAP bitmap = MakeBitmap(DrawFace(face, size_), size_);
    place->second = ImageList_Add(List(), bitmap, nullptr);
    DeleteObject(bitmap);
  }
  return place->second;
}

HICON MakeIcon(Face face, int size) {
  ICONINFO icon{};
  icon.fIcon = TRUE;
  icon.hbmColor = MakeBitmap(DrawFace(face, size), size);
  icon.hbmMask = CreateBitmap(size, size, 1, 1, nullptr);
  HICON made = icon.hbmColor && icon.hbmMask ? CreateIconIndirect(&icon) : nullptr;
  if (icon.hbmColor) DeleteObject(icon.hbmColor);
  if (icon.hbmMask) DeleteObject(icon.hbmMask);
  return made;
}

}  // namespace scrivo::host
