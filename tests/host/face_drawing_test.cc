#include "host/face_drawing.h"

#include <gtest/gtest.h>

namespace scrivo::host {
namespace {

constexpr Face kAll[] = {Face::kBook, Face::kFolder, Face::kQuestion, Face::kGlobe, Face::kRefresh};

TEST(FaceDrawingTest, KnowsTheFacesOfTheCommands) {
  EXPECT_EQ(FaceOf(2138), Face::kBook);
  EXPECT_EQ(FaceOf(23), Face::kFolder);
  EXPECT_EQ(FaceOf(983), Face::kQuestion);
  EXPECT_EQ(FaceOf(1445), Face::kGlobe);
  EXPECT_EQ(FaceOf(0), Face::kNone);
  EXPECT_EQ(FaceOf(-1), Face::kNone);
}

TEST(FaceDrawingTest, EveryPictureHasInkAndClearCorners) {
  for (const Face face : kAll) {
    for (const int size : {16, 24, 32}) {
      const auto pixels = DrawFace(face, size);
      ASSERT_EQ(pixels.size(), static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
      EXPECT_EQ(pixels.front(), 0u);
      EXPECT_EQ(pixels.back(), 0u);
      std::size_t inked = 0;
      for (const std::uint32_t pixel : pixels) inked += pixel >> 24 > 128;
      EXPECT_GT(inked, pixels.size() / 8) << static_cast<int>(face) << " at " << size;
    }
  }
}

TEST(FaceDrawingTest, ColoursNeverExceedTheirAlpha) {
  for (const Face face : kAll) {
    for (const std::uint32_t pixel : DrawFace(face, 20)) {
      for (const int shift : {0, 8, 16}) EXPECT_LE((pixel >> shift) & 0xFF, pixel >> 24);
    }
  }
}

TEST(FaceDrawingTest, PicturesDiffer) {
  for (const Face one : kAll) {
    for (const Face other : kAll) {
      EXPECT_EQ(DrawFace(one, 16) == DrawFace(other, 16), one == other);
    }
  }
}

TEST(FaceDrawingTest, NoFaceIsClear) {
  EXPECT_EQ(DrawFace(Face::kNone, 4), std::vector<std::uint32_t>(16, 0));
}

}  // namespace
}  // namespace scrivo::host
