#include "exceptions/fine_ops.h"

namespace quilla {

FineHandling::FineHandling(Session& session, FineView& view, QString entryMode)
    : EntryMode(std::move(entryMode))
    , m_session(session)
    , m_view(view)
{
}

void FineHandling::warn(const QString& text)
{
    m_session.prompt.warn(text, OperationTitle);
}

void FineHandling::refuse(const QString& text, int box)
{
    warn(text);
    m_view.focusBox(box);
}

void FineHandling::clearBoxes(int from)
{
    for (int index = from; index < FineBox::Count; ++index)
        m_view.setBox(index, {});
}

void FineHandling::clearKinds()
{
    for (const FineKind kind : FineKinds)
        m_view.setTicked(kind, false);
    m_view.setTickable(FineKind::Lost, true);
}

void FineHandling::clearWorkings()
{
    for (const FineKind kind : FineKinds)
        m_view.setWorking(kind, {});
}

void FineHandling::kindChanged(FineKind kind)
{
    const QString barcode = boxText(FineBox::Barcode);
    if (barcode.isEmpty()) return m_view.setTicked(kind, false);
    if (!m_view.isTicked(kind)) {
        for (const int index : {FineBox::due(kind), FineBox::taken(kind), FineBox::remark(kind)})
            m_view.setBox(index, {});
        m_view.setWorking(kind, {});
    } else if (kind == FineKind::Defile) {
        ComputeDefileFine(barcode);
    } else if (kind == FineKind::Lost) {
        ComputeLostFine(barcode);
    }
}

void FineHandling::save(int index)
{
    if (ValidateFine())
        SaveFine(index);
    else
        SavedFlag.clear();
}

} // namespace quilla
