#include "host/win32/face_images.h"

#include <cstring>

namespace scrivo::host {
namespace {

HBITMAP MakeBitmap(Face face, int size) {
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
  const auto pixels = DrawFace(face, size);
  std::memcpy(bits, pixels.data(), pixels.size() * sizeof pixels[0]);
  return bitmap;
}

}  // namespace

FaceImages::~FaceImages() {
  if (list_) ImageList_Destroy(list_);
  for (const auto& [face, bitmap] : bitmaps_) DeleteObject(bitmap);
}

HBITMAP FaceImages::Bitmap(std::int32_t face_id) {
  const Face face = FaceOf(face_id);
  if (face == Face::kNone) return nullptr;
  const auto [place, is_new] = bitmaps_.try_emplace(face);
  if (is_new) place->second = MakeBitmap(face, size_);
  return place->second;
}

HIMAGELIST FaceImages::List() {
  if (!list_) list_ = ImageList_Create(size_, size_, ILC_COLOR32, 4, 4);
  return list_;
}

int FaceImages::ListIndex(std::int32_t face_id) {
  HBITMAP bitmap = Bitmap(face_id);
  if (!bitmap) return I_IMAGENONE;
  const auto [place, is_new] = indexes_.try_emplace(FaceOf(face_id));
  if (is_new) place->second = ImageList_Add(List(), bitmap, nullptr);
  return place->second;
}

HICON MakeIcon(Face face, int size) {
  ICONINFO icon{};
  icon.fIcon = TRUE;
  icon.hbmColor = MakeBitmap(face, size);
  icon.hbmMask = CreateBitmap(size, size, 1, 1, nullptr);
  HICON made = icon.hbmColor && icon.hbmMask ? CreateIconIndirect(&icon) : nullptr;
  if (icon.hbmColor) DeleteObject(icon.hbmColor);
  if (icon.hbmMask) DeleteObject(icon.hbmMask);
  return made;
}

}  // namespace scrivo::host
