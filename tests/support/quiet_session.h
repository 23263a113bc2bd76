#pragma once

#include "desk/desk_view.h"
#include "frame/session.h"

namespace quilla {

/// What a session needs where nobody looks: no boxes, no dialogs.
class QuietPrompt final : public Prompt {
public:
    Answer show(const Message& message) override { return message.question ? Answer::No : Answer::Ok; }
};

class NoEditor final : public ConnectionEditor {
public:
    void editConnection() override { }
};

/// A desk without a screen.
class NoDesk final : public DeskView {
public:
    void focusReaderCode() override { }
    void emptyReaderCode() override { }
    void setReaderCode(const QString&) override { }
    void untickRenewal() override { }
    void selectBarCode() override { }
    void emptyAndFocusBarCode() override { }
    void showPage(int) override { }
    void clearReaderPanel() override { }
    void fillReaderPanel(const ReaderPanel&) override { }
    void showReaderStatus(const QString&) override { }
    void setUpLoans() override { }
    void bindLoans(Recordset&) override { }
    void setUpReturns() override { }
    void bindReturns(Recordset&) override { }
};

} // namespace quilla
