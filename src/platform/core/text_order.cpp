#include "platform/core/text_order.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <unicode/ucol.h>

#include <array>

namespace quilla {

namespace {

void refuseFailure(UErrorCode status)
{
    if (U_FAILURE(status))
        throw Error(ErrorNumber::CannotOpen, u"ICU"_s,
            u"不能使用中文排序规则，请检查 ICU 的安装：%1"_s.arg(QString::fromLatin1(u_errorName(status))));
}

/// Pinyin; the second strength sees accents, and neither case nor width.
const UCollator* pinyin()
{
    static const UCollator* const collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        UCollator* opened = ucol_open("zh", &status);
        refuseFailure(status);
        ucol_setStrength(opened, UCOL_SECONDARY);
        return opened;
    }();
    return collator;
}

template <typename View> View withoutTrailingBlanks(View text)
{
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

/// Places of the letters and digits of ASCII among themselves, without case; 0 for all else.
constexpr auto CodePlaces = [] {
    std::array<unsigned char, 128> places {};
    unsigned char place = 0;
    for (int c = '0'; c <= '9'; ++c)
        places[std::size_t(c)] = ++place;
    for (int c = 'a'; c <= 'z'; ++c)
        places[std::size_t(c)] = places[std::size_t(c - 'a' + 'A')] = ++place;
    return places;
}();

template <typename Char> int codePlace(Char c)
{
    const auto code = std::make_unsigned_t<Char>(c);
    return code < CodePlaces.size() ? CodePlaces[code] : 0;
}

/// The order of two texts that are decided by the letters and digits they begin with. What follows the first
/// two that differ can't outweigh them. Nullopt when something else must be looked at.
template <typename View> std::optional<int> compareCodes(View left, View right)
{
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        const int l = codePlace(left[i]);
        const int r = codePlace(right[i]);
        if (l == 0 || r == 0) return {};
        if (l != r) return l - r;
    }
    if (left.size() == right.size()) return 0;
    const bool leftIsLonger = left.size() > right.size();
    if (codePlace((leftIsLonger ? left : right)[common]) == 0) return {};
    return leftIsLonger ? 1 : -1;
}

int collated(std::u16string_view left, std::u16string_view right)
{
    return ucol_strcoll(pinyin(), left.data(), int(left.size()), right.data(), int(right.size()));
}

int collated(std::string_view left, std::string_view right)
{
    UErrorCode status = U_ZERO_ERROR;
    const int order
        = ucol_strcollUTF8(pinyin(), left.data(), int(left.size()), right.data(), int(right.size()), &status);
    refuseFailure(status);
    return order;
}

template <typename View> int compare(View left, View right)
{
    left = withoutTrailingBlanks(left);
    right = withoutTrailingBlanks(right);
    if (left == right) return 0;
    if (const auto order = compareCodes(left, right)) return *order;
    return collated(left, right);
}

std::u16string_view view(QStringView text)
{
    return {text.utf16(), std::size_t(text.size())};
}

} // namespace

int compareText(QStringView left, QStringView right)
{
    return compare(view(left), view(right));
}

int compareUtf8(std::string_view left, std::string_view right)
{
    return compare(left, right);
}

QByteArray orderKey(QStringView text)
{
    const std::u16string_view shown = withoutTrailingBlanks(view(text));
    QByteArray key(qsizetype(3 * shown.size() + 16), Qt::Uninitialized);
    const auto write = [&] {
        return ucol_getSortKey(pinyin(), shown.data(), int(shown.size()),
            reinterpret_cast<std::uint8_t*>(key.data()), int(key.size()));
    };
    const int size = write();
    const bool fits = size <= key.size();
    key.resize(size);
    if (!fits) write();
    return key;
}

const QString& orderVersion()
{
    static const QString version = [] {
        UVersionInfo numbers;
        ucol_getVersion(pinyin(), numbers);
        char text[U_MAX_VERSION_STRING_LENGTH];
        u_versionToString(numbers, text);
        return QString::fromLatin1(text);
    }();
    return version;
}

} // namespace quilla
