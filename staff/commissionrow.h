#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

// One person's commission over a period. Nothing is rounded: only the table rounds, for display.
struct CommissionRow {
    std::optional<QUuid> staffID; // absent for lines that kept only a name
    QString staffName;
    double services = 0; // the quantity of their lines
    double revenue = 0;  // what their lines brought in after discounts, before tax
    double commission = 0;
};

// The "Staff Commission" report as headers and rows of finished text.
struct CommissionTable {
    QStringList headers;
    QList<QStringList> rows;
};
