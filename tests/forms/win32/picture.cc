#include "tests/forms/win32/picture.h"

#include <cstdint>
#include <fstream>
#include <vector>

namespace scrivo {

bool KeepPicture(HWND window, const std::string& path) {
  RECT place;
  GetWindowRect(window, &place);
  const int width = place.right - place.left, height = place.bottom - place.top;
  HDC from = GetWindowDC(window);
  HDC to = CreateCompatibleDC(from);
  HBITMAP bitmap = CreateCompatibleBitmap(from, width, height);
  HGDIOBJ old = SelectObject(to, bitmap);
  BitBlt(to, 0, 0, width, height, from, 0, 0, SRCCOPY);
  SelectObject(to, old);

  BITMAPINFOHEADER info{};
  info.biSize = sizeof info;
  info.biWidth = width;
  info.biHeight = height;
  info.biPlanes = 1;
  info.biBitCount = 32;
  info.biCompression = BI_RGB;
  std::vector<char> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
  GetDIBits(to, bitmap, 0, static_cast<UINT>(height), pixels.data(),
            reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(to);
  ReleaseDC(window, from);

  BITMAPFILEHEADER head{};
  head.bfType = 0x4D42;  // "BM"
  head.bfOffBits = sizeof head + sizeof info;
  head.bfSize = head.bfOffBits + static_cast<DWORD>(pixels.size());
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(&head), sizeof head);
  file.write(reinterpret_cast<const char*>(&info), sizeof info);
  file.write(pixels.data(), static_cast<std::streamsize>(pixels.size()));
  return file.good();
}

}  // namespace scrivo
