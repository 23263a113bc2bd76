#pragma once

#include "platform/core/text.h"

namespace quilla {

/// The application title, shown on every message box that has no title of its own.
inline constexpr QStringView ApplicationTitle = u"青简台";
/// The usual title of a failure or refusal.
inline constexpr QStringView OperationTitle = u"操作提示";
/// The shorter title of the desk's refusals.
inline constexpr QStringView HintTitle = u"提示";

enum class Icon { None, Information, Warning, Critical, Question };
enum class Answer { Ok, Yes, No };

/// One message box. `title` null stands for the application title; a title that is empty but not null
/// stays empty.
struct Message {
    QString text;
    QString title;
    Icon icon = Icon::Information;
    bool question = false; ///< Yes and No instead of OK
    Answer preset = Answer::Yes; ///< the default button of a question

    /// The title as it stands over the box.
    QString shownTitle() const;
};

/// Where operations speak to the operator: a dialog on the screen, a script in a test.
class Prompt {
public:
    virtual ~Prompt() = default;

    /// Shows the box and waits for its answer. A question that is closed without a button answers No.
    virtual Answer show(const Message& message) = 0;

    void inform(const QString& text, QStringView title = {});
    void warn(const QString& text, QStringView title = {});
    void stop(const QString& text, QStringView title = {});
    /// True for Yes.
    bool ask(const QString& text, QStringView title = {}, Icon icon = Icon::Information,
        Answer preset = Answer::Yes);
};

} // namespace quilla
