#pragma once

#include <QObject>

#include <vector>

class QTableView;

namespace quilla {

class GridModel;
class SettingsStore;

/// The widths of a grid's columns: as the program sets them, else as the captions with their blanks ask for,
/// until the operator drags one. Every column is at least as wide as its caption, and the columns share what
/// the grid has left; dragged widths stay as they are.
class GridColumns final : public QObject {
    Q_OBJECT

public:
    GridColumns(QTableView& view, const GridModel& model);

    /// In twips; 0 hides a column.
    int width(int col) const;
    void setWidth(int col, int twips);
    void setWidths(const std::vector<int>& twips);
    void layOut();

    /// Takes the operator's widths from the settings and keeps them there from now on, under `name`. Each set
    /// of captions that the grid shows in turn has its own.
    void remember(SettingsStore& settings, const QString& name);
    /// For captions that changed.
    void takeRemembered();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void offerToForget(const QPoint& at);
    void forget();
    void storeDragged();
    int captionPixels(int col) const;
    std::vector<int> wantedPixels() const;
    QString settingsKey() const;

    QTableView& m_view;
    const GridModel& m_model;
    std::vector<int> m_widths; ///< twips; -1 where the caption decides
    std::vector<int> m_dragged; ///< twips of all columns, once the operator has dragged one
    SettingsStore* m_settings = nullptr;
    QString m_name;
    bool m_layingOut = false;
    bool m_dragging = false;
};

} // namespace quilla
