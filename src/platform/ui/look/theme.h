#pragma once

#include <QColor>
#include <QFont>

class QApplication;
class QLabel;
class QWidget;

namespace quilla {

/// The colours of the program by what they mean. A state is never shown by its colour alone: the text
/// beside it says the same. A `Theme` as it is constructed is the light one. Words have a contrast of at
/// least 4.5 to what they stand on, frames and signs of 3.
struct Theme {
    QColor window {0xf2, 0xf5, 0xf6}; ///< behind the controls; also the face of a disabled box
    QColor surface {0xff, 0xff, 0xff}; ///< boxes and grids
    QColor page {0xff, 0xff, 0xff}; ///< behind the controls of a tab's page
    QColor zebra {0xf7, 0xfa, 0xfa}; ///< every other line of a grid
    QColor header {0xe6, 0xed, 0xee}; ///< captions of a grid
    QColor line {0xdd, 0xe4, 0xe6}; ///< between the cells of a grid
    QColor border {0x7d, 0x8b, 0x91}; ///< around boxes and buttons
    QColor text {0x1d, 0x2a, 0x30};
    QColor mutedText {0x5b, 0x6b, 0x72};
    QColor disabledText {0x8a, 0x97, 0x9c};
    QColor accent {0x14, 0x6c, 0x7a}; ///< selection
    QColor accentText {0xff, 0xff, 0xff};
    QColor link {0x14, 0x6c, 0x7a}; ///< links, the focus, the marks in drawn signs
    QColor titleBar {0x14, 0x6c, 0x7a}; ///< over the window in use, with `accentText` on it
    QColor restingSelection {0xcf, 0xe4, 0xe7}; ///< the selected line of a grid without the focus
    QColor figures {0xc0, 0xc0, 0xff}; ///< the selected line of a statistic's grid
    QColor highlight {0xff, 0xf6, 0xd8}; ///< the box that is being typed in, where a screen wants it
    QColor ok {0x17, 0x6b, 0x3a};
    QColor warning {0x85, 0x56, 0x00};
    QColor error {0xb0, 0x20, 0x20};

    static Theme dark();
    static const Theme& current(); ///< the one that `applyTheme` has set

    QFont font() const; ///< a Chinese sans serif of 10.5 points
};

enum class Shade { Light, Dark };
/// What the desktop's own palette asks for; after `applyTheme` the shade in use.
Shade desktopShade();

/// Sets style, palette and font of the whole program, and Qt's own texts to Chinese where they are
/// installed.
void applyTheme(QApplication& application, Shade shade = desktopShade());

enum class Tone { Plain, Faded, Ok, Warning, Error };
/// Colours a label that already says in words what happened.
void setTone(QLabel& label, Tone tone);

/// Screen measures are given in twips, 15 a pixel at the size of text they were drawn for (12 pixels);
/// they grow with the font of the widget.
int pixelsOf(int twips, const QWidget& widget);
int twipsOf(int pixels, const QWidget& widget);

} // namespace quilla
