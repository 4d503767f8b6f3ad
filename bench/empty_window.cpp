// SPDX-License-Identifier: GPL-3.0-or-later
//
// The least that a window of the viewer's toolkit takes to open.
#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>

int main()
{
    Fl_Double_Window window(1060, 760, "empty");
    window.color(fl_rgb_color(0xEE, 0xF0, 0xF3));
    window.end();
    window.show();
    return Fl::run();
}
