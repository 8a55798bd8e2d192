// The namespaces of other libraries that have specializations for values: Doxygen must have seen them.

/// The formatting library {fmt}.
namespace fmt {}
