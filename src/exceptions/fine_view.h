#pragma once

#include "exceptions/loan_lookup_ops.h"

namespace quilla {

/// The kinds of a fine, in the order of their boxes and pages.
enum class FineKind { Overdue, Defile, Lost };

inline constexpr FineKind FineKinds[] {FineKind::Overdue, FineKind::Defile, FineKind::Lost};

/// The boxes of the fine screen by what they hold. Each kind has three: what the rules ask, what is taken,
/// a remark.
namespace FineBox {
enum { ReaderCode, ReaderName, Barcode, Title, FirstOfKinds, Count = 13 };

constexpr int due(FineKind kind)
{
    return FirstOfKinds + 3 * int(kind);
}
constexpr int taken(FineKind kind)
{
    return due(kind) + 1;
}
constexpr int remark(FineKind kind)
{
    return due(kind) + 2;
}
/// Where the focus goes for the tick of a kind, after the boxes.
constexpr int ofKind(FineKind kind)
{
    return Count + int(kind);
}
} // namespace FineBox

/// What the fine handling may do to its screen. The screen reports each change of a box or of a kind's tick
/// back, also one that was made through here.
class FineView : public BoxView {
public:
    virtual bool isTicked(FineKind kind) const = 0;
    virtual void setTicked(FineKind kind, bool ticked) = 0;
    /// Whether the operator may change that tick.
    virtual void setTickable(FineKind kind, bool tickable) = 0;
    virtual void focusKind(FineKind kind) = 0;
    /// How the amount came about.
    virtual void setWorking(FineKind kind, const QString& text) = 0;

    /// The open loans, and the fines taken; a result without rows empties the grid.
    virtual void showLoans(Recordset& loans) = 0;
    virtual void showFines(Recordset& fines) = 0;

    virtual void closeScreen() = 0;
};

/// No kind is ticked, and 丢失 may be ticked again.
void clearKinds(FineView& view);
/// Empties the boxes from `first` on, clears the kinds and takes their workings away.
void clearFine(FineView& view, int first);

} // namespace quilla
