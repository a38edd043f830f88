#pragma once

#include "library/package_record.h"

namespace plum {

// Which files of an app go over into its new version, of those whose names the new version does not bring.
enum class CarriedFiles {
    All,
    UsersOwn, // those that no package brought, and those that changed since
};

enum class CarryOutcome { Done, NoRoom, Failed };

// Copies files of the app's folder `from` into its new version's, `to` (paths of the system); letter case
// does not tell names apart. `brought` is what the old version's package brought; what of it goes over
// unchanged is added to `record`. Pipes and devices stay behind, links are copied as links.
CarryOutcome carryOver(const QString &from, const QString &to, const PackageRecord &brought,
    CarriedFiles which, PackageRecord &record);

} // namespace plum
