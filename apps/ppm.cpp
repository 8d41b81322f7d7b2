#include "ppm.h"

#include <cstdio>
#include <memory>
#include <vector>

namespace demo {

namespace {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

bool writeNetpbm(const std::string& path, const char* magic, const View& image,
                 const int* channels, int channelCount) {
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "wb"));
    if (!file) return false;
    std::fprintf(file.get(), "%s\n%d %d\n255\n", magic, image.width, image.height);
    std::vector<uint8_t> line(static_cast<size_t>(image.width) * channelCount);
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x)
            for (int c = 0; c < channelCount; ++c)
                line[static_cast<size_t>(x) * channelCount + c] = image.at(channels[c], x, y);
        if (std::fwrite(line.data(), 1, line.size(), file.get()) != line.size()) return false;
    }
    return std::fflush(file.get()) == 0;
}

}  // namespace

bool writePpm(const std::string& path, const View& image) {
    static const int rgb[3] = {0, 1, 2};
    return writeNetpbm(path, "P6", image, rgb, 3);
}

bool writePgm(const std::string& path, const View& image, int channel) {
    return writeNetpbm(path, "P5", image, &channel, 1);
}

}  // namespace demo
