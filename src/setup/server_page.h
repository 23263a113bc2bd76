#pragma once

#include "platform/ui/form/result_label.h"
#include "platform/ui/form/text_box.h"
#include "setup/setup_page.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

namespace quilla {

/// A library on a server, and the test of the way to it.
class ServerPage final : public SetupPage {
    Q_OBJECT

public:
    ServerPage(SetupPlace& place, SetupPlan& plan);
    void open() override;
    /// Passes after a test that succeeded with what stands in the boxes now.
    void goOn() override;
    void stop() override;

    QComboBox cboKind;
    QComboBox cboSource;
    TextBox txtHost;
    TextBox txtPort;
    TextBox txtDatabase;
    TextBox txtUser;
    TextBox txtPassword;
    QCheckBox chkEncrypt {QStringLiteral("加密连接（TLS）(&E)")};
    QPushButton cmdTest {QStringLiteral("测试(&C)")};
    ResultLabel labSteps;
    ResultLabel labResult;

private:
    void layOut();
    void followKind();
    ServerInput input() const;
    /// Tests, and goes on after a success when that is asked for.
    void test(bool thenGoOn);
    void take(const ServerTest& test);
    void focusAfter(const ServerProbe& probe);
    void pass();

    QString m_text; ///< what `m_test` is about
    ServerTest m_test;
    bool m_goesOn = false;
    QLabel m_source {QStringLiteral("数据源(&D)：")};
    QLabel m_host {QStringLiteral("主机(&H)：")};
    QLabel m_port {QStringLiteral("端口(&O)：")};
};

} // namespace quilla
