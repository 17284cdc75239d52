#pragma once

#include <QAbstractButton>
#include <QWidget>

class QHBoxLayout;
class QVBoxLayout;

namespace lullwick {

/// The title row of a disclosure group: a checkable button with a chevron, whose text and
/// accessible name are the group's title. Space, Enter and Return toggle it.
class DisclosureHeader : public QAbstractButton {
    Q_OBJECT
public:
    explicit DisclosureHeader(const QString &title, QWidget *parent = nullptr);

    /// The row beside the chevron that shows the title (icon, label, count…), filled by the caller.
    [[nodiscard]] QHBoxLayout *row() const { return m_row; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QHBoxLayout *m_row;
};

/// A title row with a chevron above content that it shows while open. The open state belongs to
/// the caller: `setExpanded` only shows a state, and `toggled` reports what the user asked for.
class DisclosureGroup : public QWidget {
    Q_OBJECT
public:
    explicit DisclosureGroup(const QString &title, QWidget *parent = nullptr);

    [[nodiscard]] DisclosureHeader *header() const { return m_header; }
    /// Puts `content` below the title; the group takes it over.
    void setContent(QWidget *content);
    [[nodiscard]] QWidget *content() const { return m_content; }

    [[nodiscard]] bool isExpanded() const;
    /// Shows the group open or closed without emitting `toggled`. A closed group's content is
    /// hidden, so it also leaves the focus chain.
    void setExpanded(bool expanded);

Q_SIGNALS:
    /// The user opened (true) or closed (false) the group.
    void toggled(bool expanded);

private:
    DisclosureHeader *m_header;
    QVBoxLayout *m_column;
    QWidget *m_content = nullptr;
};

} // namespace lullwick
