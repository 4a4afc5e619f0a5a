#pragma once

#include <QLabel>

#include <optional>

// A form's error in red, in the exact words of the message; takes no room while there is none.
class ErrorLabel : public QLabel {
    Q_OBJECT

public:
    explicit ErrorLabel(QWidget* parent = nullptr);

    void setMessage(const std::optional<QString>& message);
};
