// Forward references: putting a type in the place of its marker once it has come.
//
// The input may name a type before it defines it. The record that names it then holds a marker, the
// tk_ti with bit 23 set, and TMAP puts the tk_ti on the block's list of pending ones and counts one
// more unresolved reference. When a definition takes a number under a pending tk_ti, UpdateTypes
// goes over the references of all records, in the order of the TypeTable and of the lists in the
// image, and patches those whose type has come. It stops in the middle once nothing is unresolved.
//
// A walk over every record for every such definition would cost the product of both. So the walk is
// made over an index instead, and has to come out as if it had been made in full:
//
// - ReferenceIndex knows for each marker the places that hold it. A place is a record and, in its
//   list, an element; places compare in the order of the walk. Each marker has a heap of its
//   places, the first on top, and the index has a heap of the tops: a heap of heaps, from which the
//   walk draws one place after the other in its order, whatever markers they hold.
// - Only markers that the walk can do something with are active, that is, stand in the upper heap.
//   Without the trace those are the ones whose type has come. With DebugMode a walk also names each
//   type that it looks for in vain, a line for each reference, so all pending markers are active,
//   and a place whose marker has stayed is noted again when the walk is over.
// - Markers outlive their block: they stay in their records, and match when a later block leaves
// the
//   same tk_ti pending. A new block therefore deactivates all markers but forgets no place. A
//   marker can also match two pending numbers, which differ in bit 23 only; they are tried in the
//   order of the list.
// - Records may share a list: the copies that typedefs make. Its elements are noted for the first
//   record. Where an element still holds a marker after its visit, the walk comes to it again for
//   the next record with the list, since the full walk would.
// - A list may claim more elements than it has, since the length of a stored item is cut to 16 bits
//   and its count is not. What lies behind it in the image counts as its elements then: names,
//   other lists, whatever comes later. ReferenceIndex takes these words in as the image grows, and
//   again where something is written over them.
//
// The walk also tells when the bitfields of a struct can be placed: when the element visited last
// in its list has just got its type. That is the last element, or the one with which the last
// unresolved reference went.
#pragma once

#include <cstdint>

namespace scan695 {

// Takes the next number for `key`, a tk_ti or 0 for a nested type, and gives it. Resolves the
// references that wait for the key, before the caller has appended its record.
uint32_t TakeTypeNumber(uint32_t key);

// Visits the references of all records and resolves those that wait for a type on the pending list
// that has come by now; stops as soon as no reference is left. Where that resolved the last member
// of a struct, sets BitfieldsPending and BitfieldsStruct.
void UpdateTypes();

// Tells that the 16 bytes at `offset` of the image have been written over, outside UpdateTypes.
void NoteWrite(uint32_t offset);

}  // namespace scan695
