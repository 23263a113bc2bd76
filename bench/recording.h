#pragma once

#include "platform/db/pooled_factory.h"
#include "platform/sql/translator.h"

#include <array>
#include <functional>
#include <vector>

namespace quilla {

/// What one run of a desk operation is about, as its statements name it; UTF-8.
struct DeskTask {
    enum Part { Barcode, Reader, Name, Title, Loan, Parts };
    std::array<QByteArray, Parts> texts;
    QString barcode() const { return QString::fromUtf8(texts[Barcode]); }
    QString reader() const { return QString::fromUtf8(texts[Reader]); }
};

/// A parameter of a recorded statement: a part of the work, or the same each time.
struct Argument {
    int part = -1;
    sql::Kind kind = sql::Kind::Text;
    QByteArray text;
    double number = 0;
};

/// A statement that an operation sent, in the engine's own words.
struct Step {
    QByteArray text; ///< "begin" and "commit" as the program says them
    std::vector<Argument> arguments;
    int prepared = -1; ///< the bare driver's number for it
    bool isBegin() const { return text == "begin"; }
    bool isCommit() const { return text == "commit"; }
};
using Recording = std::vector<Step>;

/// What `operation` sends for `work`, to be sent again for others. Each part of the work must be a text that
/// no other literal of its statements has.
Recording record(PooledFactory& factory, sql::Translator& translator, const DeskTask& work,
    const std::function<void()>& operation);

} // namespace quilla
