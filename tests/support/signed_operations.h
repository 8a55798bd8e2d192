// The rows of the signed and mixed operators, which close the table of operations.
#pragma once

#include <vector>

#include "operations.h"

namespace twin {

std::vector<Binary> signed_binary_operations();
std::vector<Relation> signed_relations();
std::vector<InPlace> signed_in_place_operations();
std::vector<Derived> signed_derived_values();
std::vector<Query> signed_queries();
std::vector<Change> signed_changes();

}  // namespace twin
