#pragma once

#include <QWidget>

#include <functional>

class QGridLayout;
class QLabel;
class QLineEdit;
class QVBoxLayout;

// One concern of the Settings form: a heading over one or more cards of rows.
class SettingsSection : public QWidget {
    Q_OBJECT

public:
    explicit SettingsSection(const QString& heading, QWidget* parent = nullptr);

protected:
    // A new card below the last, with its own column of rows.
    QVBoxLayout* addCard();
    void addSubheading(const QString& text);
    // Rows of a card: the label beside its field, both centred on the row.
    static QGridLayout* addForm(QVBoxLayout* card);
    QLabel* addRow(QGridLayout* form, const QString& label, QWidget* field);
    // A line under a row saying what it does, in the quiet note style.
    void addNote(QGridLayout* form, QLabel* note);
    // Saves a text row when the person leaves the field, not at every keystroke.
    static void saveWhenEdited(QLineEdit* edit, std::function<void(const QString&)> save);

private:
    QVBoxLayout* m_layout;
};
