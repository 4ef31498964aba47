// Precompiled for the layers of the module: what nearly all of them take in anyway.
#include <boost/lexical_cast.hpp>
#include <boost/ptr_container/ptr_deque.hpp>
#include <boost/ptr_container/ptr_map.hpp>
#include <boost/regex.hpp>
#include <boost/variant.hpp>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>
