#include "modules/store/qt_store_transfers.h"

namespace plum {

class QtStoreModule final : public QObject, public StoreModule
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "plum.StoreModule/1")
    Q_INTERFACES(plum::StoreModule)

public:
    std::unique_ptr<StoreTransfers> createTransfers(const Paths &paths, TextCodec &codec) override
    {
        return std::make_unique<QtStoreTransfers>(paths, codec);
    }
};

} // namespace plum

#include "store_module.moc"
