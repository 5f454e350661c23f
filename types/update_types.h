// Forward references: putting the type in the place of its marker once it has come.
#pragma once

namespace scan695 {

// Visits the references of the TypeTable in the order of its records, as if it walked over them,
// and resolves those that wait for a type on the pending list that has come by now; stops as soon
// as no reference is left. Where that resolved the last member of a struct, sets BitfieldsPending
// and BitfieldsStruct.
void UpdateTypes();

}  // namespace scan695
