#include "ui/controls/formfields.h"

#include <QAbstractItemView>
#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>

QLabel* addLabelledField(QBoxLayout* layout, const QString& label, QWidget* field)
{
    auto* caption = new QLabel(label);
    caption->setBuddy(field);
    field->setAccessibleName(label);
    auto* pair = new QVBoxLayout;
    pair->setSpacing(4);
    pair->addWidget(caption);
    pair->addWidget(field);
    layout->addLayout(pair);
    return caption;
}

QLineEdit* makeSearchField(const QString& prompt, QWidget* parent)
{
    auto* search = new QLineEdit(parent);
    search->setPlaceholderText(prompt);
    search->setAccessibleName(prompt);
    search->setClearButtonEnabled(true);
    return search;
}

namespace {
class WholeChoiceTip : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip)
            return false;
        auto* combo = static_cast<QComboBox*>(watched);
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), combo->currentText(), combo);
        return true;
    }
};
} // namespace

void showWholeChoice(QComboBox* combo)
{
    // Asked for on hover, since forms set the choice with signals blocked.
    combo->installEventFilter(new WholeChoiceTip(combo));
    QAbstractItemView* list = combo->view();
    list->setTextElideMode(Qt::ElideNone);
    // The popup is never narrower than its list; the entries are filled in after this.
    const auto fit = [list] {
        list->setMinimumWidth(list->sizeHintForColumn(0) + list->verticalScrollBar()->sizeHint().width());
    };
    QAbstractItemModel* entries = combo->model();
    QObject::connect(entries, &QAbstractItemModel::rowsInserted, list, fit);
    QObject::connect(entries, &QAbstractItemModel::modelReset, list, fit);
    QObject::connect(entries, &QAbstractItemModel::dataChanged, list, fit);
}

void focusToReplace(QLineEdit* edit)
{
    edit->setFocus();
    edit->selectAll();
}

QGridLayout* makeFieldGrid()
{
    auto* grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(10);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    return grid;
}

void addLabelledCell(QGridLayout* grid, int row, int column, const QString& label, QWidget* field)
{
    auto* cell = new QVBoxLayout;
    addLabelledField(cell, label, field);
    grid->addLayout(cell, row, column);
}
