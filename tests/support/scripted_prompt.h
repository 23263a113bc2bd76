#pragma once

#include "platform/core/prompt.h"

#include <QStringList>

#include <deque>
#include <optional>

namespace quilla {

/// Answers message boxes by a script. A box that was not expected, one that differs from what was
/// expected, and one that never came are complaints; a test ends with none.
class ScriptedPrompt final : public Prompt {
public:
    class Box {
    public:
        explicit Box(QString text)
            : m_text(std::move(text))
        {
        }
        Box& titled(QStringView title);
        Box& icon(Icon icon);
        /// `preset` is the default button of the question.
        Box& answer(Answer answer, Answer preset = Answer::Yes);

    private:
        friend class ScriptedPrompt;
        QString m_text;
        bool m_startOnly = false;
        std::optional<QString> m_title;
        std::optional<Icon> m_icon;
        Answer m_answer = Answer::Ok;
        Answer m_preset = Answer::Yes;
    };

    Box& expect(const QString& text);
    /// A box of which only the beginning is known, such as one that ends in an engine's words.
    Box& expectStart(const QString& text);

    Answer show(const Message& message) override;

    /// What went wrong so far, leftovers included; forgets it all.
    QString takeComplaints();

private:
    void compare(const Box& box, const Message& message);

    std::deque<Box> m_boxes;
    QStringList m_complaints;
};

} // namespace quilla
