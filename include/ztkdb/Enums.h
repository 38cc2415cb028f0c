#pragma once

#include <cstdint>

namespace ZTkDb {

// Kind of object an order or report refers to (column byObjTyp).
enum TkObjTypes : int32_t {
  sotUndefined = 0,
  sotStand = 1,
  sotBuilding = 2,
  sotFloor = 3,
  sotRoom = 4,
  sotTechObjFolder = 5,
  sotTechObj = 6,
  sotAnlage = 7,
  sotObjekt = 8,
};

// Where an order or report came from (column byHerkunft). The records hold
// the origin as a byte, so values outside this list pass unchecked.
enum HerkunftTypes : int32_t {
  hetUndefined = 0,
  hetTikora = 1,
  hetGebaeude = 2,
  hetTechnik = 3,
  hetInventar = 4,
  hetBrandschutz = 5,
  hetInvTK = 6,
  hetBrandTK = 7,
  hetTechTK = 8,
  hetImportGlt = 9,
};

// Sort orders of the order list, all ascending. A value outside 0..6 leaves
// the statement empty, and the engine's error reaches the caller.
enum OrderSortOrderConstants : int32_t {
  osUnsorted = 0,
  osByOrderNumber = 1,
  osByOrderDate = 2,
  osByOrderDoneTillDate = 3,
  osByOrderDoneOnDate = 4,
  osByOrderReturnOnDate = 5,
  osByMsgId = 6,
};

}  // namespace ZTkDb

namespace ZTkDb {

// Sort orders of the report list, all ascending. msbymsgdate keeps the
// spelling hosts bind to.
enum MsgSortOrderConstants : int32_t {
  msUnsorted = 0,
  msByMsgNumber = 1,
  msbymsgdate = 2,
  msByMsgDoneTillDate = 3,
  msByMsgDoneOnDate = 4,
  msByMsgReturnOnDate = 5,
};

}  // namespace ZTkDb
