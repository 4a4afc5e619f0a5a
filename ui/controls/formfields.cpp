#include "ui/controls/formfields.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>

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
