#pragma once

#include "platform/ui/form/text_box.h"
#include "readers/memo_box.h"
#include "readers/reader_card_saving_ops.h"
#include "readers/reader_photo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace quilla {

/// The text boxes of the card editor, by their index.
namespace CardBox {
enum {
    ReaderCode,
    Name,
    LoanCopies,
    OnLoan,
    Issued,
    Term,
    Memo,
    Type, ///< repeats the list of types
    LoanDays,
    OverdueFine,
    DefileFine,
    LostFine,
    Renewals,
    RenewalDays,
    HoldDays,
    HoldCopies,
    ArtsCopies,
    ScienceCopies,
    ArtsOnLoan,
    ScienceOnLoan,
    Reserved,
    Count
};
}

/// Its lists.
namespace CardList {
enum { Sex, Type, Unit, Status, Count };
}

/// The boxes of the reader's papers.
namespace CardDetail {
enum { Number, Email, Address, Count };
}

/// Enters a reader card or changes one, its number included. Modal; a new card is followed by the next one.
class DzaddFrm final : public QDialog, private ReaderCardView {
    Q_OBJECT

public:
    /// `refreshList` runs after each new card.
    DzaddFrm(Session& session, std::function<void()> refreshList, QWidget* parent = nullptr);

    /// "A" adds, "E" edits, in either case of letters; anything else cannot be saved.
    void SetEditMode(const QString& mode);
    /// Puts the card before the operator, or an empty one for an empty code. After `SetEditMode`.
    void LoadReader(const QString& readercode);

    TextBox Text1[CardBox::Count]; ///< but for the remarks, which are `Memo`
    MemoBox Memo; ///< `Text1(6)`
    QComboBox Combo1[CardList::Count];
    QComboBox Combo2; ///< kind of the reader's papers
    TextBox Text2[CardDetail::Count];
    ReaderPhoto ManPic;
    QGroupBox Frame2; ///< the parameters
    QCheckBox Check1[2];
    QPushButton cmdUpdateZheng;
    QPushButton cmdXianShi;
    QPushButton CmdSave;
    QPushButton CmdQuit;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void layOut();
    void wire();
    void LoadCombo();
    void fillEmptyList(int list);
    void showCard(const ReaderCard& card);
    void showPapers(const ReaderPapers& papers);
    void showStored(const std::optional<LoadedCard>& stored);
    void barSaving(const QString& why);
    void takeType();
    void startCodeChange();
    void takeYears();
    void writeToday(TextBox& box);
    void toggleParameters();
    void setParametersShown(bool shown);
    void save();

    ReaderCard shownCard() const override;
    bool hasUnits() const override;
    void showQuota(const QString& text) override;
    void showStatus(const QString& text) override;
    void focusField(int field) override;
    void showParameters() override;
    void tellFailure(const QString& headline, const QString& detail) override;

    void setList(int list, const QString& text);
    void showRules(const RuleTexts& rules);

    QLabel m_memo;
    QLabel m_whyNotSaved; ///< a sentence, where what is stored is not known
    Session& m_session;
    std::function<void()> m_refreshList;
    CardEdit m_edit;
};

} // namespace quilla
