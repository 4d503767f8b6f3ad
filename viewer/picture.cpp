// SPDX-License-Identifier: GPL-3.0-or-later
#include "picture.h"

#include <csetjmp>
#include <cstdio>
#include <jpeglib.h>

namespace
{
constexpr std::size_t Most_Pixels = 64U << 20;

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

/// Nothing that has a destructor may be made between here and a jump: the picture is the caller's.
bool Decode(std::string_view jpeg, int width, Picture &picture)
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
    jpeg_mem_src(&decoder, reinterpret_cast<const unsigned char *>(jpeg.data()), jpeg.size());
    jpeg_read_header(&decoder, TRUE);
    decoder.out_color_space = JCS_RGB;
    decoder.scale_num = 1;
    decoder.scale_denom = Divisor(decoder.image_width, width);
    jpeg_calc_output_dimensions(&decoder);
    const bool fits = std::size_t(decoder.output_width) * decoder.output_height <= Most_Pixels;
    if (fits) {
        picture.width = static_cast<int>(decoder.output_width);
        picture.height = static_cast<int>(decoder.output_height);
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
} // namespace

Picture Read_Picture(std::string_view jpeg, int width)
{
    Picture picture;
    return Decode(jpeg, width, picture) ? picture : Picture();
}
