#pragma once

#include <QStringList>

#include <vector>

namespace quilla {

/// The paper of a slip: a roll, cut after the last line, or a small sheet.
enum class SlipPaper { Roll58, Roll80, A6 };

/// What a reader takes home: a heading, lines about him, and his items with a line of their own each below.
struct Slip {
    struct Item {
        QString text;
        QString detail;
    };

    QString title;
    QStringList head {};
    std::vector<Item> items {};
    QStringList foot {};
    SlipPaper paper = SlipPaper::Roll80;
};

} // namespace quilla
