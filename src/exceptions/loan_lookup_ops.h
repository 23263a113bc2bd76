#pragma once

#include "frame/work.h"
#include "platform/core/prompt.h"

namespace quilla {

/// The boxes that say which book is out with whom, as the fine screen and the register of losses begin.
namespace LoanBox {
enum { ReaderCode, ReaderName, Barcode, Title, Count };
}

/// The boxes of a form by their index.
class BoxView {
public:
    virtual ~BoxView() = default;
    virtual QString box(int index) const = 0;
    virtual void setBox(int index, const QString& text) = 0;
    virtual void focusBox(int index) = 0;
};

/// How a box that was left is looked up. Of several rows the first counts.
struct LookUp {
    QString statement; ///< "%1" is the text, its quotes doubled
    QString notFound; ///< the message when there is no such row
    std::vector<std::pair<QString, int>> found; ///< fields and the boxes that take them
};

/// The look-ups of the first two boxes; the other two differ from screen to screen.
LookUp lookUpByCode();
LookUp lookUpByName();
inline constexpr QStringView NoSuchBarcode = u"此条形码不存在 或 不存在借阅信息。";
inline constexpr QStringView NoSuchTitle = u"此图书名不存在 或 不存在借阅信息。";

/// Finds the row and puts its fields into their boxes as the database has them: " P3" with its blank is
/// another reader than "P3". nullopt when there is no row, which the caller reports.
std::optional<Recordset> lookUpBox(
    ResumingWork& work, BoxView& view, const LookUp& rule, const QString& text);

/// Whether the copy in its box is out with the reader in the first one; true without a copy.
bool isOutWithReader(ResumingWork& work, const BoxView& view);
inline constexpr QStringView NotOutWithReader = u"该读者并不存在此书刊的节阅信息。";

} // namespace quilla
