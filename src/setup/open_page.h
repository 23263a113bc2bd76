#pragma once

#include "platform/ui/form/result_label.h"
#include "platform/ui/form/text_box.h"
#include "setup/setup_page.h"

#include <QPushButton>

namespace quilla {

/// A library that lies in a file.
class OpenPage final : public SetupPage {
    Q_OBJECT

public:
    OpenPage(SetupPlace& place, SetupPlan& plan);
    void open() override;
    void goOn() override;
    void stop() override;

    TextBox txtFile;
    QPushButton cmdBrowse {QStringLiteral("浏览(&L)…")};
    ResultLabel labResult;

private:
    void browse();
    void take(const QString& failure, const FoundLibrary& found);
};

} // namespace quilla
