#pragma once

#include <QScrollArea>

class QLabel;

namespace lullwick {

class AssertionsModel;
class SelectableText;

/// The Details page: the two pmset texts as printed, with headings, assertion types and detail
/// lines coloured, selectable and copyable. Redraws from the model's change signals and when the
/// palette changes.
class DetailsView : public QScrollArea {
    Q_OBJECT
public:
    explicit DetailsView(AssertionsModel *model, QWidget *parent = nullptr);

protected:
    void changeEvent(QEvent *event) override;

private:
    /// One of the two texts: the coloured lines, or "(no output)" when there are none.
    struct Section {
        SelectableText *text;
        QLabel *empty;
        QString shown; ///< the output the section shows, so that the same output is not coloured again
    };

    [[nodiscard]] Section makeSection(const QString &heading, const QString &objectName);
    /// Shows `output` in `section`, unless it shows it already; `again` colours it anew all the same.
    void showSection(Section &section, const QString &output, bool again = false);
    void showAll(bool again = false);

    AssertionsModel *m_model;
    Section m_assertions{};
    Section m_settings{};
};

} // namespace lullwick
