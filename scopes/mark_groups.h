// The group pass over the sorted lifetime marks of a variable. A group is a run of marks with one
// PC. An end and a begin that meet there at one place cancel each other, since the variable goes on
// living where it was; what is left is put in an order in which begins and ends alternate.
#pragma once

#include <vector>

#include "scopes/lifetime_mark.h"

namespace scan695 {

// Works through all groups; removed marks leave no gap. The marks are in the order of the sort.
void ResolveGroups(std::vector<TkLoc>& marks);

}  // namespace scan695
