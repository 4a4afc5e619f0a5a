#pragma once

#include "records/recordsfwd.h"
#include "store/record.h"

#include <QDateTime>
#include <QString>

#include <array>
#include <functional>
#include <optional>

class PrinterDirectory;
class RawPrintTransport;

enum class CashDrawerConnection { simulated, receiptPrinter };
enum class DrawerPin { pin2, pin5 };

struct CashDrawerConnections {
    static constexpr std::array<CashDrawerConnection, 2> all{CashDrawerConnection::simulated,
                                                             CashDrawerConnection::receiptPrinter};
    static QString raw(CashDrawerConnection connection);
    // Anything but a real connection, also an unknown text, is simulated.
    static CashDrawerConnection fromRaw(const QString& raw);
    static QString label(CashDrawerConnection connection);
};

struct DrawerPins {
    static constexpr std::array<DrawerPin, 2> all{DrawerPin::pin2, DrawerPin::pin5};
    static QString raw(DrawerPin pin);
    // Unknown text is pin 2, which most drawers use.
    static DrawerPin fromRaw(const QString& raw);
    static QString label(DrawerPin pin);
};

class CashDrawerOpening {
public:
    virtual ~CashDrawerOpening() = default;
    virtual void openDrawer() = 0;
};

// No drawer at all: an opening is only remembered.
class SimulatedCashDrawerService : public CashDrawerOpening {
public:
    void openDrawer() override;
    std::optional<QDateTime> lastOpenedAt() const { return m_lastOpenedAt; }

private:
    std::optional<QDateTime> m_lastOpenedAt;
};

// The drawer as Settings describe it at the moment of opening, so a change there applies at once.
// A real drawer is kicked with the ESC/POS pulse through the receipt printer's queue; the printer
// is looked for first, so an unplugged one is reported instead of leaving a kick waiting in the
// queue to fire later. Main thread only.
class ConfigurableCashDrawer : public CashDrawerOpening {
public:
    using SettingsSource = std::function<Ref<AppSettings>()>;

    ConfigurableCashDrawer(SettingsSource settings, PrinterDirectory& directory, RawPrintTransport& transport);

    void openDrawer() override;
    static QByteArray kickBytes(DrawerPin pin);

    std::optional<QDateTime> lastOpenedAt() const { return m_lastOpenedAt; }
    const SimulatedCashDrawerService& simulated() const { return m_simulated; }

private:
    SettingsSource m_settings;
    PrinterDirectory& m_directory;
    RawPrintTransport& m_transport;
    SimulatedCashDrawerService m_simulated;
    std::optional<QDateTime> m_lastOpenedAt;
};
