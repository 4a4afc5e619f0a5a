#pragma once

#include <QWidget>

class QButtonGroup;

// A row of joined buttons of which exactly one is chosen: a two- or three-way switch.
class SegmentedControl : public QWidget {
    Q_OBJECT

public:
    explicit SegmentedControl(const QStringList& labels, QWidget* parent = nullptr);

    int currentIndex() const;
    void setCurrentIndex(int index);
    QWidget* segment(int index) const;

Q_SIGNALS:
    void currentIndexChanged(int index);

private:
    QButtonGroup* m_group;
};
