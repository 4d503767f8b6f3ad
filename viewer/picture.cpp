// SPDX-License-Identifier: GPL-3.0-or-later
#include "picture.h"

#include <csetjmp>
#include <cstdio>
#include <jpeglib.h>
#include <png.h>

namespace Pictures
{
namespace
{
constexpr int Longest_Side = 40'000;
constexpr std::size_t Most_Pixels = 64U << 20; ///< decoded
constexpr std::size_t Most_Read = 256U << 20;  ///< of a JPEG, before it is made smaller
constexpr unsigned char White = 255;

bool Is_Shown(std::size_t width, std::size_t height, std::size_t most)
{
    return width > 0 && height > 0 && width <= Longest_Side && height <= Longest_Side && width * height <= most;
}

struct Trouble {
    jpeg_error_mgr manager; ///< first, so that a pointer to it is one to the whole
    std::jmp_buf back;
};

void Give_Up(j_common_ptr decoder)
{
    std::longjmp(reinterpret_cast<Trouble *>(decoder->err)->back, 1);
}
void Say_Nothing(j_common_ptr /*decoder*/) {}

/// The most that the decoder may divide by without getting narrower than asked.
unsigned Divisor(unsigned whole, int wanted)
{
    unsigned divisor = 1;
    while (divisor < 8 && whole / (divisor * 2) >= static_cast<unsigned>(wanted))
        divisor *= 2;
    return divisor;
}

/// @param width  0 for the size alone
/// Nothing that has a destructor may be made between here and a jump: the picture is the caller's.
bool Read_Jpeg(std::string_view bytes, int width, Decoded &picture)
{
    jpeg_decompress_struct decoder{};
    Trouble trouble{};
    decoder.err = jpeg_std_error(&trouble.manager);
    trouble.manager.error_exit = Give_Up;
    trouble.manager.output_message = Say_Nothing;
    if (setjmp(trouble.back) != 0) {
        jpeg_destroy_decompress(&decoder);
        return false;
    }
    jpeg_create_decompress(&decoder);
    jpeg_mem_src(&decoder, reinterpret_cast<const unsigned char *>(bytes.data()), bytes.size());
    jpeg_read_header(&decoder, TRUE);
    // One that comes in several scans is held whole while it is decoded.
    const bool isWhole = jpeg_has_multiple_scans(&decoder) != 0;
    bool fits = Is_Shown(decoder.image_width, decoder.image_height, isWhole ? Most_Pixels : Most_Read);
    picture.size = {static_cast<int>(decoder.image_width), static_cast<int>(decoder.image_height)};
    if (fits && width > 0) {
        decoder.out_color_space = JCS_RGB;
        decoder.scale_num = 1;
        decoder.scale_denom = Divisor(decoder.image_width, width);
        jpeg_calc_output_dimensions(&decoder);
        fits = Is_Shown(decoder.output_width, decoder.output_height, Most_Pixels);
    }
    if (fits && width > 0) {
        picture.size = {static_cast<int>(decoder.output_width), static_cast<int>(decoder.output_height)};
        picture.pixels.resize(std::size_t(decoder.output_width) * decoder.output_height * 3);
        jpeg_start_decompress(&decoder);
        while (decoder.output_scanline < decoder.output_height) {
            JSAMPROW row = picture.pixels.data() + std::size_t(decoder.output_scanline) * decoder.output_width * 3;
            jpeg_read_scanlines(&decoder, &row, 1);
        }
    }
    jpeg_destroy_decompress(&decoder);
    return fits;
}

/// @param isWhole  false for the size alone
bool Read_Png(std::string_view bytes, bool isWhole, Decoded &picture)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    bool done = png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) != 0 &&
                Is_Shown(image.width, image.height, Most_Pixels);
    picture.size = {static_cast<int>(image.width), static_cast<int>(image.height)};
    if (done && isWhole) {
        image.format = PNG_FORMAT_RGB;
        picture.pixels.resize(PNG_IMAGE_SIZE(image));
        const png_color white{White, White, White};
        done = png_image_finish_read(&image, &white, picture.pixels.data(), 0, nullptr) != 0;
    }
    png_image_free(&image);
    return done;
}

bool Read(std::string_view bytes, int width, Decoded &picture)
{
    if (bytes.starts_with("\xFF\xD8"))
        return Read_Jpeg(bytes, width, picture);
    return bytes.starts_with("\x89PNG") && Read_Png(bytes, width > 0, picture);
}
} // namespace

Size Size_Of(std::string_view bytes)
{
    Decoded picture;
    return Read(bytes, 0, picture) ? picture.size : Size();
}

Decoded Decode(std::string_view bytes, int width)
{
    Decoded picture;
    return Read(bytes, width > 0 ? width : 1, picture) ? std::move(picture) : Decoded();
}
} // namespace Pictures
