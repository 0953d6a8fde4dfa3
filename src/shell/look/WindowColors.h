#pragma once

#include <QColor>

namespace vorq {

/// The colours of windows, dialogs and menus that the toolkit draws, those of the pages' theme.
struct WindowColors {
    QColor window;
    QColor menu;
    QColor field;
    QColor button;
    QColor tip;
    QColor ink;
    QColor placeholderInk;
    QColor disabledInk;
    QColor accent;
    QColor linkInk;
};

inline constexpr WindowColors darkWindowColors{.window = {0x21, 0x23, 0x29},
                                               .menu = {0x2E, 0x31, 0x39},
                                               .field = {0x1C, 0x1E, 0x23},
                                               .button = {0x34, 0x37, 0x41},
                                               .tip = {0x34, 0x37, 0x41},
                                               .ink = {0xF3, 0xF4, 0xF8},
                                               .placeholderInk = {0xA3, 0xA8, 0xB6},
                                               .disabledInk = {0x68, 0x6C, 0x79},
                                               .accent = {0x4A, 0x65, 0xEA},
                                               .linkInk = {0xAE, 0xBD, 0xFF}};

inline constexpr WindowColors lightWindowColors{.window = {0xF3, 0xF4, 0xF7},
                                                .menu = {0xFF, 0xFF, 0xFF},
                                                .field = {0xFF, 0xFF, 0xFF},
                                                .button = {0xEE, 0xF0, 0xF4},
                                                .tip = {0xFF, 0xFF, 0xFF},
                                                .ink = {0x14, 0x16, 0x1D},
                                                .placeholderInk = {0x62, 0x68, 0x79},
                                                .disabledInk = {0xA3, 0xA8, 0xB5},
                                                .accent = {0x3F, 0x5A, 0xE6},
                                                .linkInk = {0x2E, 0x48, 0xCC}};

/// Where contrast matters most: at least 7:1 for everything that is read.
inline constexpr WindowColors strongDarkWindowColors{.window = {0x00, 0x00, 0x00},
                                                     .menu = {0x26, 0x26, 0x26},
                                                     .field = {0x00, 0x00, 0x00},
                                                     .button = {0x20, 0x20, 0x20},
                                                     .tip = {0x00, 0x00, 0x00},
                                                     .ink = {0xFF, 0xFF, 0xFF},
                                                     .placeholderInk = {0xD0, 0xD0, 0xD0},
                                                     .disabledInk = {0xB0, 0xB0, 0xB0},
                                                     .accent = {0x1F, 0x3B, 0xB3},
                                                     .linkInk = {0xB9, 0xC7, 0xFF}};

inline constexpr WindowColors strongLightWindowColors{.window = {0xFF, 0xFF, 0xFF},
                                                      .menu = {0xFF, 0xFF, 0xFF},
                                                      .field = {0xFF, 0xFF, 0xFF},
                                                      .button = {0xE8, 0xE8, 0xE8},
                                                      .tip = {0xFF, 0xFF, 0xFF},
                                                      .ink = {0x00, 0x00, 0x00},
                                                      .placeholderInk = {0x3A, 0x3A, 0x3A},
                                                      .disabledInk = {0x40, 0x40, 0x40},
                                                      .accent = {0x0B, 0x1F, 0x8F},
                                                      .linkInk = {0x0B, 0x1F, 0x8F}};

} // namespace vorq
