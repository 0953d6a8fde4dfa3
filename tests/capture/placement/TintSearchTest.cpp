#include "capture/placement/TintSearch.h"

#include "capture/placement/TintSamples.h"
#include "doubles/capture/PaintedPicture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace vorq {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr TintColor paleBlue = PaintedPicture::paleBlue;
constexpr TintColor white = PaintedPicture::white;

using Picture = PaintedPicture;

TEST(TintSearch, FindsTheBoxAroundTheSeed) {
    Picture picture(400, 300);
    picture.paint({90, 60, 70, 18}, paleBlue);
    const auto box = picture.find({120, 70});
    ASSERT_TRUE(box);
    EXPECT_EQ(box->frame, QRectF(90, 60, 69, 17));
    EXPECT_EQ(box->radius, 48);
    EXPECT_EQ(box->hits, 70U * 18U);
    EXPECT_EQ(box->allHits, 70U * 18U);
}

// Of two pixels to a point every second one is looked at, wherever the seed is.
TEST(TintSearch, FindsTheSameBoxNearTheSeedAsInTheWholeArea) {
    Picture picture(800, 600);
    picture.paint({201, 161, 83, 31}, paleBlue);
    const QSizeF window(400, 300);
    for (const QPointF seed : {QPointF(120, 88), {120.5, 88}, {120, 88.5}, {120.5, 88.5}}) {
        TintQuery query{
            .windowSize = window, .search = {3.5, 5.5, 390, 290}, .seed = seed, .reach = {}};
        const auto whole = selectionPixelBounds(picture.buffer(), query, {&paleBlue, 1});
        query.reach = 48;
        const auto near = selectionPixelBounds(picture.buffer(), query, {&paleBlue, 1});
        ASSERT_TRUE(whole && near);
        EXPECT_EQ(near->frame, whole->frame);
        EXPECT_EQ(near->hits, whole->hits);
    }
}

TEST(TintSearch, KeepsTheFirstRadiusThatHoldsEnough) {
    Picture picture(800, 600);
    picture.paint({300, 200, 20, 10}, paleBlue);
    const auto box = picture.find({400, 205});
    ASSERT_TRUE(box);
    // 48 points reach none of it, 96 only the right part.
    EXPECT_EQ(box->radius, 96);
    EXPECT_EQ(box->frame, QRectF(304, 200, 15, 9));
}

TEST(TintSearch, GrowsTheRadiusAfterABoxThatIsTooWide) {
    // 96 % of the window's width at 48 points; nothing else is left but the band.
    Picture picture(100, 100);
    picture.paint({2, 45, 97, 3}, paleBlue);
    const auto box = picture.find({50, 46});
    ASSERT_TRUE(box);
    EXPECT_FALSE(box->radius);
    EXPECT_EQ(box->frame, QRectF(2, 45, 96, 2));
}

TEST(TintSearch, LeavesWhatIsWiderThanTheWindowAllowsToTheBand) {
    Picture picture(100, 100);
    picture.paint({0, 40, 100, 30}, paleBlue);
    const auto box = picture.find({50, 50});
    ASSERT_TRUE(box);
    EXPECT_FALSE(box->radius);
    EXPECT_EQ(box->frame.width(), 99);
    EXPECT_LE(box->frame.height(), 36);
}

TEST(TintSearch, RefusesABoxOfMoreThan140Points) {
    // Out of reach of 48 points; at 96 the box is as high as the column.
    Picture low(800, 600);
    low.paint({460, 230, 20, 141}, paleBlue);
    const auto box = low.find({400, 300});
    ASSERT_TRUE(box);
    EXPECT_EQ(box->radius, 96);
    EXPECT_EQ(box->frame, QRectF(460, 230, 19, 140));

    Picture high(800, 600);
    high.paint({460, 229, 20, 142}, paleBlue);
    const auto band = high.find({400, 300});
    ASSERT_TRUE(band);
    EXPECT_FALSE(band->radius);
    EXPECT_LE(band->frame.height(), 36);
}

TEST(TintSearch, CountsPixelsOfAScaledPictureInPoints) {
    Picture picture(800, 600);
    picture.paint({180, 120, 140, 36}, paleBlue);
    const auto box = picture.find({120, 70}, QSizeF(400, 300));
    ASSERT_TRUE(box);
    EXPECT_EQ(box->frame, QRectF(90, 60, 69, 17));
    EXPECT_EQ(box->allHits, 70U * 18U);
}

TEST(TintSearch, FindsNothingOutsideTheSearchArea) {
    Picture picture(400, 300);
    picture.paint({90, 60, 70, 18}, paleBlue);
    const TintQuery query{
        .windowSize = {400, 300}, .search = {200, 0, 200, 300}, .seed = {120, 70}};
    EXPECT_FALSE(selectionPixelBounds(picture.buffer(), query, selectionTargetColors({})));
}

TEST(TintSearch, NeedsAnAreaOfMoreThanFourPixels) {
    const Picture picture(400, 300, paleBlue);
    const auto colors = selectionTargetColors({});
    TintQuery query{.windowSize = {400, 300}, .search = {10, 10, 4, 100}, .seed = {12, 20}};
    EXPECT_FALSE(selectionPixelBounds(picture.buffer(), query, colors));
    query.search = {10, 10, 100, 4};
    EXPECT_FALSE(selectionPixelBounds(picture.buffer(), query, colors));
    query.search = {10, 10, 5, 5};
    EXPECT_TRUE(selectionPixelBounds(picture.buffer(), query, colors));
}

TEST(TintSearch, NeedsTwelveHits) {
    Picture picture(400, 300);
    picture.paint({90, 60, 11, 1}, paleBlue);
    EXPECT_FALSE(picture.find({95, 60}));
    picture.paint({90, 61, 1, 1}, paleBlue);
    EXPECT_TRUE(picture.find({95, 60}));
}

TEST(TintSearch, TakesASeedOutsideTheWindow) {
    Picture picture(400, 300);
    picture.paint({0, 100, 60, 18}, paleBlue);
    const auto box = picture.find({-40, 105});
    ASSERT_TRUE(box);
    EXPECT_EQ(box->frame.left(), 0);
    EXPECT_FALSE(picture.find({-4000, -4000}));
}

TEST(TintSearch, NeverTakesGreyOrDarkForATint) {
    const TintColor grey{.red = 0.5, .green = 0.5, .blue = 0.5};
    const std::array asGrey{grey};
    EXPECT_FALSE(Picture(400, 300, grey).find({200, 150}, {}, asGrey));
    const TintColor darkBlue{.red = 0.1, .green = 0.1, .blue = 0.4};
    const std::array asDark{darkBlue};
    EXPECT_FALSE(Picture(400, 300, darkBlue).find({200, 150}, {}, asDark));
    const TintColor orange{.red = 0.9, .green = 0.5, .blue = 0.1};
    const std::array asOrange{orange};
    EXPECT_FALSE(Picture(400, 300, orange).find({200, 150}, {}, asOrange));
}

TEST(TintSearch, TakesColoursOfTheDesktopToo) {
    const TintColor violet{.red = 0.42, .green = 0.10, .blue = 0.62};
    Picture picture(400, 300);
    picture.paint({90, 60, 70, 18}, violet);
    const std::array ofDesktop{violet};
    EXPECT_TRUE(picture.find({120, 70}, {}, ofDesktop));
    EXPECT_EQ(selectionTargetColors(ofDesktop).front().red, violet.red);
    EXPECT_EQ(selectionTargetColors(ofDesktop).size(), 5U);
}

TEST(TintSearch, StopsAtTwelveThousandHits) {
    EXPECT_EQ(Picture(400, 300, paleBlue).hits().size(), maxTintHits);
    EXPECT_EQ(Picture(100, 100, paleBlue).hits().size(), 10'000U);
}

TEST(TintSearch, ReadsRowsWithPaddingAndPixelsOfThreeBytes) {
    for (const int bytesPerPixel : {3, 4, 8}) {
        Picture picture(403, 300, white, bytesPerPixel, 13);
        picture.paint({90, 60, 70, 18}, paleBlue);
        const auto box = picture.find({120, 70});
        ASSERT_TRUE(box) << bytesPerPixel;
        EXPECT_EQ(box->frame, QRectF(90, 60, 69, 17)) << bytesPerPixel;
    }
}

TEST(TintSearch, RefusesWhatIsNoPicture) {
    const Picture picture(400, 300, paleBlue);
    const auto colors = selectionTargetColors({});
    const TintQuery query{.windowSize = {400, 300}, .search = {0, 0, 400, 300}, .seed = {5, 5}};
    const auto find = [&](const PixelBuffer& buffer, const TintQuery& asked) {
        return selectionPixelBounds(buffer, asked, colors).has_value();
    };
    ASSERT_TRUE(find(picture.buffer(), query));

    PixelBuffer cut = picture.buffer();
    cut.bytes = cut.bytes.first(cut.bytes.size() - 1);
    EXPECT_FALSE(find(cut, query));
    PixelBuffer narrow = picture.buffer();
    narrow.bytesPerRow = 400;
    EXPECT_FALSE(find(narrow, query));
    PixelBuffer huge = picture.buffer();
    huge.height = std::numeric_limits<std::int64_t>::max();
    EXPECT_FALSE(find(huge, query));
    huge.width = std::numeric_limits<std::int64_t>::max();
    EXPECT_FALSE(find(huge, query));
    EXPECT_FALSE(find({}, query));
    EXPECT_FALSE(find(picture.buffer(), {.windowSize = {0, 300}, .search = {}, .seed = {}}));
    EXPECT_FALSE(selectionPixelBounds(picture.buffer(), query, {}));

    const double nothing = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(find(picture.buffer(), {.windowSize = {400, 300},
                                         .search = {nothing, nothing, nothing, nothing},
                                         .seed = {5, 5}}));
    EXPECT_FALSE(
        find(picture.buffer(),
             {.windowSize = {400, 300}, .search = {0, 0, 400, 300}, .seed = {nothing, nothing}}));
}

TEST(SelectionBand, PrefersTheNearestOfEqualBands) {
    std::vector<TintHit> hits;
    for (int x = 0; x < 20; ++x) {
        hits.push_back({.x = x, .y = 100});
        hits.push_back({.x = x, .y = 104});
    }
    const auto band = densestSelectionBand(hits, 102, {.x = 1, .y = 1});
    ASSERT_TRUE(band);
    EXPECT_EQ(*band, QRectF(0, 100, 19, 4));
    EXPECT_FALSE(densestSelectionBand(hits, 200, {.x = 1, .y = 1}));
}

TEST(SelectionBand, NeedsTenPointsOfWidth) {
    std::vector<TintHit> hits;
    hits.reserve(20);
    for (int i = 0; i < 20; ++i)
        hits.push_back({.x = i % 2 == 0 ? 0 : 9, .y = i});
    EXPECT_FALSE(densestSelectionBand(hits, 10, {.x = 1, .y = 1}));
    for (TintHit& hit : hits)
        hit.x = hit.x / 9 * 10;
    EXPECT_TRUE(densestSelectionBand(hits, 10, {.x = 1, .y = 1}));
}

/// What a pixel must be to count, one by one and in the plainest way.
bool isPlainlyTinted(double red, double green, double blue) {
    const double luma = 0.2126 * red + 0.7152 * green + 0.0722 * blue;
    if (luma < 0.18 || luma > 0.93) return false;
    if (!(red + 0.05 < blue) || !(green + 0.02 < blue) || !(blue > 0.4)) return false;
    for (const TintColor& color : selectionTargetColors({})) {
        if (std::hypot(red - color.red, green - color.green, blue - color.blue) < 0.34) return true;
    }
    return false;
}

TEST(TintSamples, AgreeWithTheRuleForRandomPictures) {
    std::mt19937 random(7);
    for (const int bytesPerPixel : {3, 4}) {
        for (const std::int64_t stride : {1, 2, 3}) {
            // Mostly no hit, some runs of them, at all places of a chunk.
            Picture picture(517, 40, white, bytesPerPixel);
            for (int i = 0; i < 400; ++i) {
                const auto byte = [&] { return double(random() % 256) / 255.0; };
                const double x = double(random() % 500);
                const double y = double(random() % 40);
                picture.paint({x, y, double(1 + random() % 17), 1},
                              {.red = byte(), .green = byte(), .blue = byte()});
            }
            const PixelBuffer buffer = picture.buffer();
            std::size_t next = 0;
            const std::vector<TintHit> hits = picture.hits(stride);
            for (std::int64_t y = 0; y < buffer.height; y += stride) {
                for (std::int64_t x = 0; x < buffer.width; x += stride) {
                    const auto at = std::size_t(y * buffer.bytesPerRow + x * buffer.bytesPerPixel);
                    if (!isPlainlyTinted(buffer.bytes[at + 2] / 255.0, buffer.bytes[at + 1] / 255.0,
                                         buffer.bytes[at] / 255.0))
                        continue;
                    ASSERT_LT(next, hits.size());
                    ASSERT_EQ(hits[next].x, x);
                    ASSERT_EQ(hits[next].y, y);
                    ++next;
                }
            }
            EXPECT_EQ(next, hits.size());
            EXPECT_GT(next, 0U);
        }
    }
}

TEST(TintSamples, KeepTheBoundsOfTheGate) {
    const auto isHit = [](int blue, int green, int red) {
        Picture picture(64, 1);
        picture.paint({0, 0, 64, 1},
                      {.red = red / 255.0, .green = green / 255.0, .blue = blue / 255.0});
        return !picture.hits().empty();
    };
    for (int blue = 90; blue <= 255; blue += 1) {
        for (const int overRed : {11, 12, 13, 14}) {
            for (const int overGreen : {4, 5, 6, 7}) {
                const int red = blue - overRed;
                const int green = blue - overGreen;
                ASSERT_EQ(isHit(blue, green, red),
                          isPlainlyTinted(red / 255.0, green / 255.0, blue / 255.0))
                    << blue << ' ' << green << ' ' << red;
            }
        }
    }
}

} // namespace
} // namespace vorq
