#include "store_index/index_fault.h"

#include <QStringView>

#include <algorithm>
#include <array>

namespace plum {

namespace {

struct FaultText
{
    IndexFault fault;
    QStringView text;
};

constexpr std::array faultTexts{
    FaultText{IndexFault::None, u""},
    FaultText{IndexFault::NotThere, u"The store's signed index could not be fetched. Nothing was installed."},
    FaultText{
        IndexFault::TooLarge, u"The store's server sent more than an index can be. Nothing was installed."},
    FaultText{IndexFault::NoRoot,
        u"The store's keys are not vouched for by the key that this Plum was built with. Nothing was "
        u"installed."},
    FaultText{IndexFault::RootUnsigned,
        u"The store's new keys are not vouched for by its earlier ones. Nothing was installed."},
    FaultText{IndexFault::RootExpired,
        u"The store's list of keys has expired: it is out of use, or somebody holds back a newer one. "
        u"Nothing was "
        u"installed."},
    FaultText{IndexFault::Unsigned,
        u"The store's index is not signed with the store's keys. Nothing was installed."},
    FaultText{IndexFault::Damaged, u"The store's index cannot be read. Nothing was installed."},
    FaultText{IndexFault::Expired,
        u"The store's index has expired: the store is out of use, or somebody holds back a newer one. "
        u"Nothing was "
        u"installed."},
    FaultText{IndexFault::Older,
        u"The store's index is older than one that was seen before. Nothing was installed."},
    FaultText{IndexFault::Mixed,
        u"The store's index is not the one that the store has signed as its newest. Nothing was installed."},
    FaultText{IndexFault::NotVouched,
        u"This Plum knows no key of the store. Only a store on this computer may do without. Nothing was "
        u"installed."},
    FaultText{IndexFault::NotNamed, u"The store's index does not name this package. It was not installed."},
    FaultText{IndexFault::LaterEdition,
        u"This app was written for a newer Plum than this one. It was not installed."},
    FaultText{IndexFault::Revoked, u"The store has taken this package back. It was not installed."},
    FaultText{IndexFault::WrongSize,
        u"The package has another size than the store has signed. It was not installed."},
    FaultText{IndexFault::WrongChecksum,
        u"The package is not the one that the store has signed. It was not installed."},
};

} // namespace

QString indexFaultText(IndexFault fault)
{
    return std::ranges::find(faultTexts, fault, &FaultText::fault)->text.toString();
}

} // namespace plum
