#include "platform/core/prompt.h"

namespace quilla {

QString Message::shownTitle() const { return title.isNull() ? ApplicationTitle.toString() : title; }

void Prompt::inform(const QString& text, const QString& title) { show({text, title, Icon::Information}); }

void Prompt::warn(const QString& text, const QString& title) { show({text, title, Icon::Warning}); }

void Prompt::stop(const QString& text, const QString& title) { show({text, title, Icon::Critical}); }

bool Prompt::ask(const QString& text, const QString& title, Icon icon, Answer preset)
{
    return show({text, title, icon, true, preset}) == Answer::Yes;
}

} // namespace quilla
