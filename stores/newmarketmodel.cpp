#include "stores/newmarketmodel.h"

#include "startup/marketregistry.h"
#include "startup/storefiles.h"
#include "store/record.h"
#include "stores/marketprovisioner.h"
#include "stores/marketprovisioningerror.h"

#include <algorithm>

#include <QDir>
#include <QUuid>

NewMarketModel::NewMarketModel(MarketRegistry& registry, Provision provision, QObject* parent)
    : ViewModel(parent)
    , m_registry(registry)
    , m_provision(provision ? std::move(provision) : Provision(&MarketProvisioner::provision))
{
}

bool NewMarketModel::create()
{
    setErrorMessage(std::nullopt);
    if (m_adminPassword != m_confirmPassword) {
        setErrorMessage(QStringLiteral("Passwords don't match."));
        return false;
    }

    // The Switch Store menu lists stores by name alone.
    const QString name = m_marketName.trimmed();
    const QList<MarketInfo> markets = m_registry.allMarkets();
    if (std::any_of(markets.begin(), markets.end(), [&name](const MarketInfo& market) {
            return market.name.trimmed().compare(name, Qt::CaseInsensitive) == 0;
        })) {
        setErrorMessage(MarketProvisioningError(MarketProvisioningError::Case::nameInUse).description());
        return false;
    }

    const QString fileName = Record::uuidText(QUuid::createUuid()) + QStringLiteral(".store");
    const QString path = QDir(m_registry.marketsDirectory()).filePath(fileName);
    const bool made = writing([&] {
        try {
            m_provision(path, m_marketName, m_adminName, m_adminUsername, m_adminPassword);
        } catch (...) {
            // A file the save didn't finish would otherwise lie in Markets, listed nowhere.
            StoreFiles::remove(path);
            throw;
        }
    });
    if (!made)
        return false;

    // Listed only once its file is complete, so the menu never offers a store that can't open.
    m_createdMarket = m_registry.createMarket(name, fileName);
    Q_EMIT createdMarketChanged();
    return true;
}
