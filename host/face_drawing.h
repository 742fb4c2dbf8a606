#pragma once

#include <cstdint>
#include <vector>

namespace scrivo::host {

// The pictures that this host draws for the built-in faces of the Office family that it knows.
enum class Face { kNone, kBook, kFolder, kQuestion, kGlobe, kRefresh };

// The nearest picture for a face number; kNone for one that is not known.
Face FaceOf(std::int32_t face_id);

// Draws a picture into size * size pixels, top row first, each 0xAARRGGBB with the colours already
// multiplied by the alpha value, as the system's menus and image lists want them.
std::vector<std::uint32_t> DrawFace(Face face, int size);

}  // namespace scrivo::host
