// mac_check.h: the constrained-random check of the multiply-accumulate unit.
#ifndef DEMO_MAC_CHECK_H
#define DEMO_MAC_CHECK_H

/// Drives the unit with random vectors from `seed`, compares it with machine integers after every clock, and prints
/// what was covered and a verdict. The same seed prints the same text. Returns whether all vectors agreed.
bool check_mac(unsigned seed);

#endif
