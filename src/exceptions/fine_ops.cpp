#include "exceptions/fine_ops.h"

#include "exceptions/fine_amount_ops.h"
#include "exceptions/fine_settlement_ops.h"

namespace quilla {

FineHandling::FineHandling(Session& session, FineView& view, QString entryMode)
    : EntryMode(std::move(entryMode))
    , lookup(session, view)
    , m_session(session)
    , m_view(view)
{
}

void FineHandling::kindChanged(FineKind kind)
{
    const QString barcode = m_view.box(FineBox::Barcode);
    if (barcode.isEmpty()) return m_view.setTicked(kind, false);
    if (!m_view.isTicked(kind)) {
        for (const int index : {FineBox::due(kind), FineBox::taken(kind), FineBox::remark(kind)})
            m_view.setBox(index, {});
        m_view.setWorking(kind, {});
    } else if (kind == FineKind::Defile) {
        ComputeDefileFine(m_session, m_view, barcode);
    } else if (kind == FineKind::Lost) {
        ComputeLostFine(m_session, m_view, barcode);
    }
}

void FineHandling::save(int index)
{
    if (const auto refusal = ValidateFine(m_session, m_view)) {
        SavedFlag.clear();
        return tell(m_session.prompt, *refusal, [this](int box) { focus(box); });
    }
    if (!SaveFine(m_session, m_view)) return;
    SavedFlag = u"yes"_s;
    if (EntryMode == u"E" || index == 1) return m_view.closeScreen();
    goToNextFine();
}

void FineHandling::focus(int box)
{
    if (box < FineBox::Count)
        m_view.focusBox(box);
    else
        m_view.focusKind(FineKind(box - FineBox::Count));
}

void FineHandling::goToNextFine()
{
    clearFine(m_view, FineBox::Barcode);
    lookup.ReloadReaderHistory(m_view.box(FineBox::ReaderCode), {});
    m_view.focusBox(FineBox::ReaderCode);
}

} // namespace quilla
