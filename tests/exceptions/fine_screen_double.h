#pragma once

#include "exceptions/fine_ops.h"
#include "support/field_texts.h"
#include "support/test_library.h"

#include <array>

namespace quilla {

/// What R1 pays for.
inline const Row FineRules {
    {u"name"_s, u"甲"_s}, {u"fine"_s, u"0.1"_s}, {u"defile"_s, u"0.5"_s}, {u"lost"_s, u"2"_s}};

/// A fine screen without a window: it holds what the operations put on it and reports changes back.
class FineScreenDouble final : public FineView {
public:
    QString box(int index) const override { return boxes[std::size_t(index)]; }
    void setBox(int index, const QString& text) override
    {
        if (std::exchange(boxes[std::size_t(index)], text) != text && index < FineBox::FirstOfKinds)
            handling->identityChanged();
    }
    void focusBox(int index) override { focus = u"Text1(%1)"_s.arg(index); }
    bool isTicked(FineKind kind) const override { return ticked[std::size_t(kind)]; }
    void setTicked(FineKind kind, bool on) override
    {
        if (std::exchange(ticked[std::size_t(kind)], on) != on) handling->kindChanged(kind);
    }
    void setTickable(FineKind kind, bool on) override { tickable[std::size_t(kind)] = on; }
    void focusKind(FineKind kind) override { focus = u"Check1(%1)"_s.arg(int(kind)); }
    void setWorking(FineKind kind, const QString& text) override { workings[std::size_t(kind)] = text; }
    void showLoans(Recordset& rows) override { loans = barcodes(rows); }
    void showFines(Recordset& rows) override { fines = barcodes(rows); }
    void closeScreen() override { closed = true; }

    /// Puts a text into a box and leaves it, as the operator does.
    void enter(int index, const QString& text)
    {
        setBox(index, text);
        handling->lookup.Text1_LostFocus(index);
    }
    /// The boxes from `first` to `last`, joined by "|".
    QString texts(int first = 0, int last = FineBox::Title) const
    {
        return QStringList(boxes.begin() + first, boxes.begin() + last + 1).join(u'|');
    }
    /// The kinds that are ticked, by number.
    QString kinds() const
    {
        QString list;
        for (std::size_t kind = 0; kind < ticked.size(); ++kind)
            if (ticked[kind]) list += QString::number(kind);
        return list;
    }

    FineHandling* handling = nullptr;
    std::array<QString, FineBox::Count> boxes;
    std::array<bool, 3> ticked {};
    std::array<bool, 3> tickable {false, true, true};
    std::array<QString, 3> workings;
    QString loans;
    QString fines;
    QString focus;
    bool closed = false;

private:
    static QString barcodes(Recordset& rows)
    {
        QStringList list = fieldTexts(rows, u"barcode");
        list.sort();
        return list.join(u',');
    }
};

} // namespace quilla
