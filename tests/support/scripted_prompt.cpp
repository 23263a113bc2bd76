#include "support/scripted_prompt.h"

namespace quilla {

ScriptedPrompt::Box& ScriptedPrompt::Box::titled(QStringView title)
{
    m_title = title.toString();
    return *this;
}

ScriptedPrompt::Box& ScriptedPrompt::Box::icon(Icon icon)
{
    m_icon = icon;
    return *this;
}

ScriptedPrompt::Box& ScriptedPrompt::Box::answer(Answer answer, Answer preset)
{
    m_answer = answer;
    m_preset = preset;
    return *this;
}

ScriptedPrompt::Box& ScriptedPrompt::expect(const QString& text)
{
    return m_boxes.emplace_back(text);
}

ScriptedPrompt::Box& ScriptedPrompt::expectStart(const QString& text)
{
    Box& box = expect(text);
    box.m_startOnly = true;
    return box;
}

Answer ScriptedPrompt::show(const Message& message)
{
    if (m_boxes.empty()) {
        m_complaints.append(u"unexpected box: "_s + message.text);
        return message.question ? Answer::No : Answer::Ok;
    }
    const Box box = m_boxes.front();
    m_boxes.pop_front();
    compare(box, message);
    return box.m_answer;
}

void ScriptedPrompt::compare(const Box& box, const Message& message)
{
    const bool same = box.m_startOnly ? message.text.startsWith(box.m_text) : message.text == box.m_text;
    if (!same) m_complaints.append(u"expected box: "_s + box.m_text + u" but came: "_s + message.text);
    if (box.m_title && *box.m_title != message.shownTitle())
        m_complaints.append(u"title of "_s + message.text + u" is "_s + message.shownTitle());
    if (box.m_icon && *box.m_icon != message.icon)
        m_complaints.append(u"icon of "_s + message.text + u" is "_s + QString::number(int(message.icon)));
    if (message.question == (box.m_answer == Answer::Ok) || message.preset != box.m_preset)
        m_complaints.append(u"buttons of "_s + message.text);
}

QString ScriptedPrompt::takeComplaints()
{
    for (const Box& box : m_boxes)
        m_complaints.append(u"box that never came: "_s + box.m_text);
    m_boxes.clear();
    return std::exchange(m_complaints, {}).join(u'\n');
}

} // namespace quilla
