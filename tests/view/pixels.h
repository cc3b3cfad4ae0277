// Pictures by their pixels.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <cairo.h>

namespace test_support {

/// A picture of 100 by 100 pixels of the drawing from 0 to 100 in x and y: pixel (x, y) shows the
/// drawing's unit square there.
class Pixels {
public:
    explicit Pixels(const std::string& png) : rest_(png) {
        surface_.reset(cairo_image_surface_create_from_png_stream(read, this));
    }

    /// 0x00RRGGBB.
    unsigned at(int x, int y) const {
        const int row = cairo_image_surface_get_height(surface_.get()) - 1 - y;
        const unsigned char* const line =
            cairo_image_surface_get_data(surface_.get()) +
            static_cast<std::ptrdiff_t>(row) * cairo_image_surface_get_stride(surface_.get());
        return reinterpret_cast<const unsigned*>(line)[x] & 0xFFFFFFU;
    }
    bool isWhite(int x, int y) const { return at(x, y) == kWhite; }
    /// How many pixels of the rectangle are not white.
    int marked(int left, int bottom, int right, int top) const {
        int count = 0;
        for (int y = bottom; y < top; ++y)
            for (int x = left; x < right; ++x)
                count += isWhite(x, y) ? 0 : 1;
        return count;
    }

private:
    static constexpr unsigned kWhite = 0xFFFFFF;

    struct Closer {
        void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    };

    static cairo_status_t read(void* self, unsigned char* data, unsigned length) {
        std::string_view& rest = static_cast<Pixels*>(self)->rest_;
        if (rest.size() < length) return CAIRO_STATUS_READ_ERROR;
        rest.copy(reinterpret_cast<char*>(data), length);
        rest.remove_prefix(length);
        return CAIRO_STATUS_SUCCESS;
    }

    std::string_view rest_;
    std::unique_ptr<cairo_surface_t, Closer> surface_;
};

} // namespace test_support
