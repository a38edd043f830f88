#pragma once

#include <QString>

namespace plum {

// Why nothing is installed from a store.
enum class IndexFault {
    None,
    NotThere, // a signed file could not be had
    TooLarge,
    NoRoot, // no list of keys that the built-in key vouches for
    RootUnsigned, // a newer list of keys without the signatures of the one before
    RootExpired,
    Unsigned, // timestamp or index without the signatures of its role
    Damaged, // signed, and yet no such file
    Expired,
    Older, // than one that was seen
    Mixed, // not the index that the timestamp names
    NotVouched, // a store elsewhere for which this program knows no key
    NotNamed, // the index names no such package
    Revoked,
    LaterEdition, // its scripts ask for an edition of the language that this program does not know
    WrongSize,
    WrongChecksum,
};

// A sentence for the user; empty for `None`.
QString indexFaultText(IndexFault fault);

} // namespace plum
