// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>
#include <vector>

/// Rows of red, green and blue.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> pixels;
};

/// Decodes a JPEG at about this width, whatever size it says it has. @returns an empty picture for what is none
Picture Read_Picture(std::string_view jpeg, int width);
