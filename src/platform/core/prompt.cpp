#include "platform/core/prompt.h"

namespace quilla {

namespace {

QString kept(QStringView title)
{
    return title.isNull() ? QString() : title.toString();
}

} // namespace

QString Message::shownTitle() const
{
    return title.isNull() ? ApplicationTitle.toString() : title;
}

void Prompt::inform(const QString& text, QStringView title)
{
    show({text, kept(title), Icon::Information});
}

void Prompt::warn(const QString& text, QStringView title)
{
    show({text, kept(title), Icon::Warning});
}

void Prompt::stop(const QString& text, QStringView title)
{
    show({text, kept(title), Icon::Critical});
}

bool Prompt::ask(const QString& text, QStringView title, Icon icon, Answer preset)
{
    return show({text, kept(title), icon, true, preset}) == Answer::Yes;
}

} // namespace quilla
