#pragma once

#include <QLabel>

namespace quilla {

/// A framed picture of a reader. What cannot be read as a picture shows as none.
class PhotoBox : public QLabel {
    Q_OBJECT

public:
    explicit PhotoBox(QWidget* parent = nullptr);

    /// The text that stands where a picture could.
    void setHint(const QString& hint);
    /// Shows the picture in a file as large as it fits; an empty path shows none.
    void showFile(const QString& file);
    bool hasPicture() const { return !pixmap(Qt::ReturnByValue).isNull(); }

Q_SIGNALS:
    void doubleClicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    QString m_hint;
};

} // namespace quilla
