#pragma once

#include "desk/fine_dialog.h"
#include "exceptions/fine_screen_double.h"

namespace quilla {

/// The fine screen as the desk opens it for an overdue copy, without a window: the operator takes what the
/// rules ask and saves.
class QuietFines final : public FineDialog {
public:
    explicit QuietFines(Session& session)
        : m_session(session)
    {
    }
    bool settle(const QString& barcode) override
    {
        FineScreenDouble screen;
        FineHandling handling(m_session, screen, u"E"_s);
        screen.handling = &handling;
        screen.enter(FineBox::Barcode, barcode);
        handling.save(1);
        return handling.SavedFlag == u"yes";
    }

private:
    Session& m_session;
};

} // namespace quilla
