// SPDX-License-Identifier: MIT
#include "host/shared/words.h"

#include "host/shared/regionstatus.h"

QString Words::size(qlonglong bytes) const
{
    return RegionWords::size(bytes);
}

QString Words::duration(qlonglong ms) const
{
    return RegionWords::duration(ms);
}
