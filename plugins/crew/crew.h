/*
 * What the plugins captain and engineer agree on: the header that a plugin gives to those who work with it.
 * Neither needs the other to be there, nor to be loaded first.
 */
#ifndef CREW_H
#define CREW_H

#define CAPTAIN_SIGNATURE "org.skyvora.crew.captain"
#define ENGINEER_SIGNATURE "org.skyvora.crew.engineer"

/* Shared data, a float: how much fuel is to be on board, in kilograms. Whoever joins first makes it. */
#define CREW_FUEL_ORDER "crew/fuel_order_kg"

/* A message to the engineer; param: a CrewFuelReport, which it fills in before it returns. */
enum { CREW_MESSAGE_ASK_FUEL = 3001 };

/* A message from the engineer to the captain, when an order was carried out; no param. */
enum { CREW_MESSAGE_FUEL_DONE = 3002 };

typedef struct CrewFuelReport {
  float onBoard; /* kilograms */
  int orders;    /* carried out so far */
} CrewFuelReport;

#endif
