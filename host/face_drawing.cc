#include "host/face_drawing.h"

#include <algorithm>
#include <cmath>

namespace scrivo::host {
namespace {

// A picture is a function from a point of the unit square to a colour; each pixel is the mean of
// several points, which gives smooth edges at every size.

struct Colour {
  double red, green, blue, alpha;
};

constexpr Colour kClear{0, 0, 0, 0};
constexpr Colour kWhite{1, 1, 1, 1};
constexpr Colour kBlue{0.13, 0.38, 0.72, 1};
constexpr Colour kDarkBlue{0.08, 0.25, 0.5, 1};
constexpr Colour kSand{0.98, 0.80, 0.36, 1};
constexpr Colour kDarkSand{0.80, 0.58, 0.14, 1};
constexpr Colour kGreen{0.16, 0.55, 0.32, 1};

bool InBox(double x, double y, double left, double top, double right, double bottom) {
  return x >= left && x < right && y >= top && y < bottom;
}

double Distance(double x, double y, double to_x, double to_y) {
  return std::hypot(x - to_x, y - to_y);
}

// A book with lines on its right page and a spine in the middle.
Colour Book(double x, double y) {
  if (!InBox(x, y, 0.06, 0.16, 0.94, 0.86)) return kClear;
  if (std::abs(x - 0.5) < 0.035) return kDarkBlue;
  if (!InBox(x, y, 0.13, 0.22, 0.87, 0.78)) return kBlue;
  const bool is_line =
      std::abs(y - 0.36) < 0.035 || std::abs(y - 0.50) < 0.035 || std::abs(y - 0.64) < 0.035;
  const bool is_text = (x > 0.58 && x < 0.82) || (x > 0.18 && x < 0.42);
  return is_line && is_text ? kBlue : kWhite;
}

Colour Folder(double x, double y) {
  if (InBox(x, y, 0.06, 0.16, 0.44, 0.30)) return kDarkSand;
  if (!InBox(x, y, 0.06, 0.26, 0.94, 0.84)) return kClear;
  const bool is_edge = !InBox(x, y, 0.12, 0.40, 0.88, 0.78);
  return is_edge ? kDarkSand : kSand;
}

// A question mark in a disc.
Colour Question(double x, double y) {
  if (Distance(x, y, 0.5, 0.5) > 0.45) return kClear;
  if (Distance(x, y, 0.5, 0.75) < 0.065) return kWhite;
  const double ring = Distance(x, y, 0.5, 0.37);
  const bool on_hook = std::abs(ring - 0.145) < 0.055 && (y < 0.37 || (x > 0.5 && y < 0.50));
  const bool on_stem = std::abs(x - 0.5) < 0.055 && y > 0.46 && y < 0.63;
  return on_hook || on_stem ? kWhite : kBlue;
}

// A ball with a net of meridians and parallels.
Colour Globe(double x, double y) {
  const double from_middle = Distance(x, y, 0.5, 0.5);
  if (from_middle > 0.45) return kClear;
  if (from_middle > 0.39) return kDarkBlue;
  const double half_width = 0.22;
  const double meridian = std::hypot((x - 0.5) / half_width, (y - 0.5) / 0.42);
  const bool on_net = std::abs(x - 0.5) < 0.03 || std::abs(y - 0.5) < 0.03 ||
                      std::abs(meridian - 1) < 0.12 || std::abs(std::abs(y - 0.5) - 0.23) < 0.025;
  return on_net ? kWhite : kBlue;
}

// An arrow that comes back to its start.
Colour Refresh(double x, double y) {
  const double ring = Distance(x, y, 0.5, 0.52);
  const bool in_gap = x > 0.5 && y < 0.52 && y > 0.12 + (x - 0.5) * 0.9;
  if (std::abs(ring - 0.31) < 0.07 && !in_gap) return kGreen;
  const bool in_head = x > 0.5 && x < 0.78 && std::abs(y - 0.21) < 0.19 * (0.78 - x) / 0.28;
  return in_head ? kGreen : kClear;
}

Colour ColourAt(Face face, double x, double y) {
  switch (face) {
    case Face::kBook:
      return Book(x, y);
    case Face::kFolder:
      return Folder(x, y);
    case Face::kQuestion:
      return Question(x, y);
    case Face::kGlobe:
      return Globe(x, y);
    case Face::kRefresh:
      return Refresh(x, y);
    case Face::kNone:
      break;
  }
  return kClear;
}

std::uint32_t Byte(double value) {
  return static_cast<std::uint32_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

}  // namespace

Face FaceOf(std::int32_t face_id) {
  switch (face_id) {
    case 2138:
      return Face::kBook;
    case 23:
      return Face::kFolder;
    case 983:
      return Face::kQuestion;
    case 1445:
      return Face::kGlobe;
    case 459:
      return Face::kRefresh;
    default:
      return Face::kNone;
  }
}

std::vector<std::uint32_t> DrawFace(Face face, int size) {
  constexpr int kPoints = 4;  // along each side of a pixel
  std::vector<std::uint32_t> pixels;
  pixels.reserve(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
  for (int row = 0; row < size; ++row) {
    for (int column = 0; column < size; ++column) {
      Colour sum = kClear;
      for (int point = 0; point < kPoints * kPoints; ++point) {
        const int across = point % kPoints;
        const int down = point / kPoints;
        const double x = (column + (across + 0.5) / kPoints) / size;
        const double y = (row + (down + 0.5) / kPoints) / size;
        const Colour colour = ColourAt(face, x, y);
        sum = {sum.red + colour.red * colour.alpha, sum.green + colour.green * colour.alpha,
               sum.blue + colour.blue * colour.alpha, sum.alpha + colour.alpha};
      }
      const double share = 1.0 / (kPoints * kPoints);
      pixels.push_back(Byte(sum.alpha * share) << 24 | Byte(sum.red * share) << 16 |
                       Byte(sum.green * share) << 8 | Byte(sum.blue * share));
    }
  }
  return pixels;
}

}  // namespace scrivo::host
