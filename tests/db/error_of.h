#pragma once

#include "platform/core/error.h"

/// The number of the error that `step` throws, 0 for none; its text goes to `text`.
template <typename Step> int errorOf(Step step, QString* text = nullptr)
{
    try {
        step();
        return 0;
    } catch (const quilla::Error& error) {
        if (text) *text = error.text;
        return error.number;
    }
}

/// Its text, empty for none.
template <typename Step> QString errorText(Step step)
{
    QString text;
    errorOf(step, &text);
    return text;
}
