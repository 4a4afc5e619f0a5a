#pragma once

#include <QWidget>

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

private:
    QVBoxLayout* m_layout;
};
