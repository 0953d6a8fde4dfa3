// The walk over a window's pixels that looks for the tint of a selection, beside the same walk by
// OpenCV and a plain pass over the same memory.

#include "Contest.h"
#include "capture/placement/TintSamples.h"

#include <benchmark/benchmark.h>
#include <opencv2/core.hpp>

#include <cstring>
#include <memory>
#include <random>

using namespace vorq;
using namespace vorq::bench;

namespace {

struct Screenshot {
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::int64_t stride = 1;
    std::vector<std::uint8_t> bytes;

    [[nodiscard]] PixelBuffer buffer() const {
        return {.bytes = bytes, .width = width, .height = height, .bytesPerRow = width * 4};
    }
    [[nodiscard]] SampleArea area() const {
        return {.left = 0, .top = 0, .right = width, .bottom = height, .stride = stride};
    }
    /// The rows that the walk looks at.
    [[nodiscard]] std::int64_t rows() const { return (height + stride - 1) / stride; }
};

void paint(Screenshot& picture, std::int64_t left, std::int64_t top, std::int64_t width,
           std::int64_t height, std::uint32_t pixel) {
    for (std::int64_t y = top; y < top + height; ++y) {
        for (std::int64_t x = left; x < left + width; ++x)
            std::memcpy(&picture.bytes[static_cast<std::size_t>((y * picture.width + x) * 4)],
                        &pixel, sizeof(pixel));
    }
}

Screenshot blank(std::int64_t width, std::int64_t height) {
    Screenshot picture{.width = width, .height = height, .stride = 2, .bytes = {}};
    picture.bytes.resize(static_cast<std::size_t>(width * height * 4));
    paint(picture, 0, 0, width, height, 0xffffffff);
    return picture;
}

/// A page of dark text with one selected line at its end, so that all of it is walked.
Screenshot page(std::int64_t width, std::int64_t height) {
    Screenshot picture = blank(width, height);
    std::minstd_rand random(11);
    const auto upTo = [&](int limit) { return std::uniform_int_distribution(0, limit)(random); };
    for (std::int64_t y = 40; y + 60 < height; y += 40) {
        for (std::int64_t x = 40; x + 30 < width; x += 8 + upTo(19))
            paint(picture, x, y, 4 + upTo(7), 20, 0xff202020);
    }
    paint(picture, 200, height - 40, 400, 20, 0xffb3d6fa);
    return picture;
}

/// A night sky, as it were: blues that pass every gate and are far from each target all the same.
Screenshot blues(std::int64_t width, std::int64_t height) {
    Screenshot picture = blank(width, height);
    std::minstd_rand random(5);
    const auto upTo = [&](std::uint32_t limit) {
        return std::uniform_int_distribution<std::uint32_t>(0, limit)(random);
    };
    for (std::int64_t y = 0; y + 8 <= height; y += 8) {
        for (std::int64_t x = 0; x + 16 <= width; x += 16)
            paint(picture, x, y, 16, 8,
                  upTo(30) << 16U | (70 + upTo(10)) << 8U | (115 + upTo(15)) | 0xff000000U);
    }
    return picture;
}

void addPicture(const std::string& name, Screenshot screenshot) {
    const auto picture = std::make_shared<const Screenshot>(std::move(screenshot));
    const auto bytes = static_cast<std::size_t>(picture->rows() * picture->width * 4);
    addContender("tintedPixels", name, bytes, [picture, colors = selectionTargetColors({})] {
        benchmark::DoNotOptimize(tintedPixels(picture->buffer(), picture->area(), colors));
    });
    // OpenCV leaves out rows by its step, but no columns. It has no distance between colours and
    // takes any blue in a box around the targets.
    addContender("opencv", name, bytes, [picture] {
        const cv::Mat view(static_cast<int>(picture->rows()), static_cast<int>(picture->width),
                           CV_8UC4, const_cast<std::uint8_t*>(picture->bytes.data()),
                           static_cast<std::size_t>(picture->width * 4 * picture->stride));
        cv::Mat mask;
        cv::inRange(view, cv::Scalar(155, 40, 0, 0), cv::Scalar(255, 255, 230, 255), mask);
        std::vector<cv::Point> points;
        cv::findNonZero(mask, points);
        benchmark::DoNotOptimize(points);
    });
    addContender("pass", name, bytes, [picture] {
        std::uint64_t sum = 0;
        const auto row = static_cast<std::size_t>(picture->width * 4);
        for (std::int64_t y = 0; y < picture->height; y += picture->stride) {
            const std::uint8_t* at = picture->bytes.data() + static_cast<std::size_t>(y) * row;
            for (std::size_t x = 0; x + 8 <= row; x += 8) {
                std::uint64_t pixels = 0;
                std::memcpy(&pixels, at + x, sizeof(pixels));
                sum += pixels;
            }
        }
        benchmark::DoNotOptimize(sum);
    });
}

} // namespace

int main(int argc, char** argv) {
    cv::setNumThreads(1);
    for (const auto& [name, width, height] :
         {std::tuple{"5120x2880", 5120, 2880}, std::tuple{"3840x2160", 3840, 2160}}) {
        addPicture(std::string("page/") + name, page(width, height));
        addPicture(std::string("blues/") + name, blues(width, height));
    }
    return runContest(argc, argv, {"opencv"});
}
