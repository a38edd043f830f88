#include "store_index/index_fault.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace plum {

namespace {

struct FaultText
{
    IndexFault fault;
    const char *text;
};

constexpr std::array faultTexts{
    FaultText{IndexFault::None, ""},
    FaultText{IndexFault::NotThere,
        QT_TRANSLATE_NOOP(
            "plum::IndexFault", "The store's signed index could not be fetched. Nothing was installed.")},
    FaultText{IndexFault::TooLarge,
        QT_TRANSLATE_NOOP(
            "plum::IndexFault", "The store's server sent more than an index can be. Nothing was installed.")},
    FaultText{IndexFault::NoRoot,
        QT_TRANSLATE_NOOP("plum::IndexFault",
            "The store's keys are not vouched for by the key that this Plum was built with. Nothing was "
            "installed.")},
    FaultText{IndexFault::RootUnsigned,
        QT_TRANSLATE_NOOP("plum::IndexFault",
            "The store's new keys are not vouched for by its earlier ones. Nothing was installed.")},
    FaultText{IndexFault::RootExpired,
        QT_TRANSLATE_NOOP("plum::IndexFault",
            "The store's list of keys has expired: it is out of use, or somebody holds back a newer one. "
            "Nothing was installed.")},
    FaultText{IndexFault::Unsigned,
        QT_TRANSLATE_NOOP("plum::IndexFault",
            "The store's index is not signed with the store's keys. Nothing was installed.")},
    FaultText{IndexFault::Damaged,
        QT_TRANSLATE_NOOP("plum::IndexFault", "The store's index cannot be read. Nothing was installed.")},
    FaultText{IndexFault::Expired,
        QT_TRANSLATE_NOOP("plum::IndexFault",
            "The store's index has expired: the store is out of use, or somebody holds back a newer one. "
            "Nothing was installed.")},
    FaultText{IndexFault::Older,
        QT_TRANSLATE_NOOP("plum::IndexFault",
            "The store's index is older than one that was seen before. Nothing was installed.")},
    FaultText{IndexFault::Mixed,
        QT_TRANSLATE_NOOP("plum::IndexFault",
            "The store's index is not the one that the store has signed as its newest. Nothing was "
            "installed.")},
    FaultText{IndexFault::NotVouched,
        QT_TRANSLATE_NOOP("plum::IndexFault",
            "This Plum knows no key of the store. Only a store on this computer may do without. Nothing was "
            "installed.")},
    FaultText{IndexFault::NotNamed,
        QT_TRANSLATE_NOOP(
            "plum::IndexFault", "The store's index does not name this package. It was not installed.")},
    FaultText{IndexFault::LaterEdition,
        QT_TRANSLATE_NOOP("plum::IndexFault",
            "This app was written for a newer Plum than this one. It was not installed.")},
    FaultText{IndexFault::Revoked,
        QT_TRANSLATE_NOOP(
            "plum::IndexFault", "The store has taken this package back. It was not installed.")},
    FaultText{IndexFault::WrongSize,
        QT_TRANSLATE_NOOP("plum::IndexFault",
            "The package has another size than the store has signed. It was not installed.")},
    FaultText{IndexFault::WrongChecksum,
        QT_TRANSLATE_NOOP("plum::IndexFault",
            "The package is not the one that the store has signed. It was not installed.")},
};

} // namespace

QString indexFaultText(IndexFault fault)
{
    return QCoreApplication::translate(
        "plum::IndexFault", std::ranges::find(faultTexts, fault, &FaultText::fault)->text);
}

} // namespace plum
