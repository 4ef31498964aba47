#ifndef MIRN_HOST_OPENAPI_DOCUMENT_PAGE_H
#define MIRN_HOST_OPENAPI_DOCUMENT_PAGE_H

#include <boost/json/object.hpp>
#include <string>

namespace host {

/// An OpenAPI document as a page of HTML for people, which needs nothing else: no script, no style, no image.
std::string documentPage(const boost::json::object& document);

}  // namespace host

#endif
