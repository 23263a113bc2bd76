#pragma once

#include "frame/connection_ops.h"
#include "platform/ui/form/text_box.h"

#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QPointer>
#include <QPushButton>

namespace quilla {

/// The connection dialog: enters, tests and saves the connection settings.
class frmODBC final : public QDialog {
    Q_OBJECT

public:
    explicit frmODBC(Session& session, QWidget* parent = nullptr);

    QGroupBox fraStep3;
    QComboBox cboDSNList;
    TextBox txtUID;
    TextBox txtPWD;
    QComboBox cboDrivers;
    TextBox txtServer;
    TextBox txtDatabase;
    QPushButton cmdOK;
    QPushButton cmdCeshi;
    QPushButton cmdCancel;

private:
    void layOut();
    void followDataSource();
    void showInput(const ConnectionInput& input);
    ConnectionInput input() const;
    bool isComplete();
    void save();
    void test();

    Session& m_session;
};

/// Shows the connection dialog over whatever window is active.
class DialogConnectionEditor final : public ConnectionEditor {
public:
    /// The session whose settings it edits; needed before the first call.
    void serve(Session& session) { m_session = &session; }
    void editConnection() override;

private:
    Session* m_session = nullptr;
};

} // namespace quilla
