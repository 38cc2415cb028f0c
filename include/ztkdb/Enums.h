/// \file
/// The enumerations of the records and lists.
#pragma once

#include <cstdint>

namespace ZTkDb {

/// Kind of object an order or report refers to (column byObjTyp).
enum TkObjTypes : int32_t {
  sotUndefined = 0,      ///< not set
  sotStand = 1,          ///< a site (property, location)
  sotBuilding = 2,       ///< a building
  sotFloor = 3,          ///< a floor
  sotRoom = 4,           ///< a room
  sotTechObjFolder = 5,  ///< a folder of technical objects
  sotTechObj = 6,        ///< a technical object
  sotAnlage = 7,         ///< a plant (installation)
  sotObjekt = 8,         ///< an object in general
};

/// Where an order or report came from (column byHerkunft). The records hold
/// the origin as a byte, so values outside this list pass unchecked.
enum HerkunftTypes : int32_t {
  hetUndefined = 0,    ///< not set
  hetTikora = 1,       ///< raised in the help-desk module itself
  hetGebaeude = 2,     ///< from building management
  hetTechnik = 3,      ///< from technical equipment management
  hetInventar = 4,     ///< from inventory management
  hetBrandschutz = 5,  ///< from fire-protection management
  hetInvTK = 6,        ///< inventory, through the help-desk module
  hetBrandTK = 7,      ///< fire protection, through the help-desk module
  hetTechTK = 8,       ///< technical equipment, through the help-desk module
  hetImportGlt = 9,    ///< imported from the building control system
};

/// Sort orders of the order list, all ascending. A value outside 0..6 leaves
/// the statement empty, and the engine's error reaches the caller.
enum OrderSortOrderConstants : int32_t {
  osUnsorted = 0,             ///< no ORDER BY of its own (some reads then sort by report)
  osByOrderNumber = 1,        ///< by order number (lNr)
  osByOrderDate = 2,          ///< by order date (AuftragsDatum)
  osByOrderDoneTillDate = 3,  ///< by due date (ErledBisDatum)
  osByOrderDoneOnDate = 4,    ///< by date done (ErledigtDatum)
  osByOrderReturnOnDate = 5,  ///< by resubmission date (WiederDatum)
  osByMsgId = 6,              ///< by linked report (lMeldungId of T_AuftragMeldung)
};

}  // namespace ZTkDb

namespace ZTkDb {

/// Sort orders of the report list, all ascending. msbymsgdate keeps the
/// spelling hosts bind to.
enum MsgSortOrderConstants : int32_t {
  msUnsorted = 0,           ///< no ORDER BY: the engine's order
  msByMsgNumber = 1,        ///< by report number (lNr)
  msbymsgdate = 2,          ///< by report date (MeldeDatum)
  msByMsgDoneTillDate = 3,  ///< by due date (ErledBisDatum)
  msByMsgDoneOnDate = 4,    ///< by date done (ErledigtDatum)
  msByMsgReturnOnDate = 5,  ///< by resubmission date (WiederDatum)
};

}  // namespace ZTkDb
