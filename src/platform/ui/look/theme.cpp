#include "platform/ui/look/theme.h"

#include "platform/core/text.h"
#include "platform/ui/look/quilla_style.h"

#include <QApplication>
#include <QFontInfo>
#include <QLabel>
#include <QLibraryInfo>
#include <QTranslator>

namespace quilla {

namespace {

constexpr double TwipsPerPixel = 15.0;
constexpr double DesignTextPixels = 12.0;

double pixelsPerTwip(const QWidget& widget)
{
    return QFontInfo(widget.font()).pixelSize() / DesignTextPixels / TwipsPerPixel;
}

/// Set before the first window is made.
Theme& themeInUse()
{
    static Theme theme;
    return theme;
}

QPalette activePalette(const Theme& theme)
{
    QPalette palette(theme.text, theme.window);
    palette.setColor(QPalette::Window, theme.window);
    palette.setColor(QPalette::Base, theme.surface);
    palette.setColor(QPalette::AlternateBase, theme.zebra);
    palette.setColor(QPalette::Button, theme.surface);
    palette.setColor(QPalette::Mid, theme.border);
    palette.setColor(QPalette::Midlight, theme.line);
    palette.setColor(QPalette::WindowText, theme.text);
    palette.setColor(QPalette::Text, theme.text);
    palette.setColor(QPalette::ButtonText, theme.text);
    palette.setColor(QPalette::PlaceholderText, theme.mutedText);
    palette.setColor(QPalette::Highlight, theme.accent);
    palette.setColor(QPalette::HighlightedText, theme.accentText);
    palette.setColor(QPalette::Link, theme.link);
    palette.setColor(QPalette::LinkVisited, theme.link);
    palette.setColor(QPalette::ToolTipBase, theme.surface);
    palette.setColor(QPalette::ToolTipText, theme.text);
    return palette;
}

void addQuietStates(QPalette& palette, const Theme& theme)
{
    palette.setColor(QPalette::Inactive, QPalette::Highlight, theme.restingSelection);
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, theme.text);
    palette.setColor(QPalette::Disabled, QPalette::Base, theme.window);
    palette.setColor(QPalette::Disabled, QPalette::Button, theme.window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, theme.disabledText);
    // A disabled box is still read: reader, title and amount stand in such ones.
    palette.setColor(QPalette::Disabled, QPalette::Text, theme.mutedText);
}

/// So is a list that can't be opened.
QPalette listPalette(QPalette palette, const Theme& theme)
{
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, theme.mutedText);
    return palette;
}

void installChineseTexts(QApplication& application)
{
    auto* translator = new QTranslator(&application);
    if (translator->load(u"qtbase_zh_CN"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        application.installTranslator(translator);
}

} // namespace

Theme Theme::dark()
{
    Theme theme;
    theme.window = {0x20, 0x28, 0x2c};
    theme.surface = {0x17, 0x1d, 0x20};
    theme.page = {0x26, 0x2f, 0x34};
    theme.zebra = {0x1b, 0x22, 0x26};
    theme.header = {0x2b, 0x36, 0x3b};
    theme.line = {0x34, 0x40, 0x46};
    theme.text = {0xe4, 0xea, 0xec};
    theme.mutedText = {0xa3, 0xb3, 0xba};
    theme.disabledText = {0x76, 0x84, 0x8a};
    theme.accent = {0x22, 0x80, 0x8f};
    theme.link = {0x6c, 0xc4, 0xd2};
    theme.titleBar = {0x1d, 0x55, 0x60};
    theme.restingSelection = {0x1f, 0x40, 0x48};
    theme.figures = {0x3d, 0x3d, 0x80};
    theme.highlight = {0x3a, 0x35, 0x20};
    theme.ok = {0x6f, 0xcf, 0x97};
    theme.warning = {0xe8, 0xb5, 0x4a};
    theme.error = {0xff, 0x8f, 0x8a};
    return theme;
}

const Theme& Theme::current()
{
    return themeInUse();
}

QFont Theme::font() const
{
    QFont font;
    font.setFamilies({u"Noto Sans CJK SC"_s, u"Source Han Sans SC"_s, u"Microsoft YaHei"_s,
        u"WenQuanYi Micro Hei"_s, u"sans-serif"_s});
    font.setPointSizeF(10.5);
    return font;
}

Shade desktopShade()
{
    const QPalette palette = QGuiApplication::palette();
    const bool dark
        = palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    return dark ? Shade::Dark : Shade::Light;
}

void applyTheme(QApplication& application, Shade shade)
{
    const Theme& theme = themeInUse() = shade == Shade::Dark ? Theme::dark() : Theme();
    QPalette palette = activePalette(theme);
    addQuietStates(palette, theme);
    application.setStyle(new QuillaStyle(theme));
    application.setPalette(palette);
    application.setPalette(listPalette(palette, theme), "QComboBox");
    application.setFont(theme.font());
    installChineseTexts(application);
}

void setTone(QLabel& label, Tone tone)
{
    const Theme& theme = Theme::current();
    QPalette palette = label.palette();
    const QColor colour = tone == Tone::Ok ? theme.ok
        : tone == Tone::Warning            ? theme.warning
        : tone == Tone::Error              ? theme.error
        : tone == Tone::Faded              ? theme.mutedText
                                           : theme.text;
    palette.setColor(QPalette::WindowText, colour);
    label.setPalette(palette);
    QFont font = label.font();
    font.setBold(tone != Tone::Plain && tone != Tone::Faded);
    label.setFont(font);
}

int pixelsOf(int twips, const QWidget& widget)
{
    return qRound(twips * pixelsPerTwip(widget));
}

int twipsOf(int pixels, const QWidget& widget)
{
    return qRound(pixels / pixelsPerTwip(widget));
}

} // namespace quilla
