#pragma once

#include <map>

#include "host/face_drawing.h"
#include "platform/win32/windows.h"
// After windows.h, on which it stands.
#include <commctrl.h>

namespace scrivo::host {

// The pictures of the built-in faces at one size, as menus and toolbars take them.
class FaceImages {
 public:
  // `size` is that of a side in pixels.
  explicit FaceImages(int size) : size_(size) {}
  FaceImages(const FaceImages&) = delete;
  FaceImages& operator=(const FaceImages&) = delete;
  ~FaceImages();

  int Size() const { return size_; }
  // A face's picture for a menu, null when there is none for it. It stays ours.
  HBITMAP MenuBitmap(std::int32_t face_id);
  // All pictures in one list, ours as well, and a face's place in it; I_IMAGENONE without one.
  HIMAGELIST List();
  int ListIndex(std::int32_t face_id);

 private:
  const int size_;
  std::map<Face, HBITMAP> menu_bitmaps_;
  std::map<Face, int> indexes_;
  HIMAGELIST list_ = nullptr;
};

// A picture as a window's icon. Owned by the caller (DestroyIcon); null when it cannot be made.
HICON MakeIcon(Face face, int size);

}  // namespace scrivo::host
