#pragma once

#include <QLineEdit>
#include <QString>

class QBoxLayout;
class QComboBox;
class QGridLayout;
class QLabel;

// A field with its label above it; the label's mnemonic and screen readers point at the field.
QLabel* addLabelledField(QBoxLayout* layout, const QString& label, QWidget* field);

// A form of labelled fields in two columns of equal width, spaced as every form is.
QGridLayout* makeFieldGrid();
// A field with its label above it, in that cell of the grid.
void addLabelledCell(QGridLayout* grid, int row, int column, const QString& label, QWidget* field);

// The caret in `edit` with all of it selected, so that typing replaces what stands there.
void focusToReplace(QLineEdit* edit);

// A search box over a list, its prompt shown in it while empty.
QLineEdit* makeSearchField(const QString& prompt, QWidget* parent);

// A combo box narrower than its choice: the whole choice on hover, and a list as wide as its
// longest entry.
void showWholeChoice(QComboBox* combo);

// Keeps a line edit and a view model's text in step both ways: what the person types goes to the
// model, and the model's own changes (a cleared form) come back to the field.
template <class Model, class Changed>
void bindText(QLineEdit* edit, Model& model, QString (Model::*getter)() const,
              void (Model::*setter)(const QString&), Changed changed)
{
    edit->setText((model.*getter)());
    QObject::connect(edit, &QLineEdit::textEdited, &model,
                     [&model, setter](const QString& text) { (model.*setter)(text); });
    QObject::connect(&model, changed, edit, [edit, &model, getter] {
        const QString text = (model.*getter)();
        if (edit->text() != text)
            edit->setText(text);
    });
}
