#pragma once

#include "frame/workplace.h"

#include <QMenu>
#include <QPushButton>

namespace quilla {

/// The button of the slips: prints one, and keeps on which paper.
class SlipButton final : public QPushButton {
    Q_OBJECT

public:
    explicit SlipButton(const Workplace& place);

    /// Prints what the reader has on loan, or says which paper is to be chosen first.
    void print(const QString& readercode);

Q_SIGNALS:
    void asked(); ///< for the slip of the reader who stands at the desk

private:
    void fillMenu();

    Session& m_session;
    FormPrinter& m_printer;
    QMenu m_menu;
};

} // namespace quilla
