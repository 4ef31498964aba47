// The library of URLs itself, which comes as headers here.
#include <boost/url/src.hpp>
