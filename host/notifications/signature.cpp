#include "notifications/signature.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <optional>
#include <stdexcept>

#include "identity/private_text.h"
#include "identity/secrets.h"

namespace host {

namespace {

std::string textOf(const std::filesystem::path& file) {
  const std::optional<std::string> text = readPrivateText(file);
  if (!text) throw std::runtime_error("is not there");
  std::string secret = boost::algorithm::trim_right_copy_if(*text, boost::algorithm::is_any_of("\r\n"));
  if (secret.size() < kLeastSecretBytes) {
    throw std::runtime_error("holds fewer than " + std::to_string(kLeastSecretBytes) + " bytes");
  }
  return secret;
}

}  // namespace

std::string signatureOf(const std::string& secret, std::int64_t seconds, const std::string& body) {
  const std::string moment = std::to_string(seconds);
  return "t=" + moment + ",v1=" + hmacSha256Hex(secret, moment + '.' + body);
}

std::string secretIn(const std::filesystem::path& file) try {
  return textOf(file);
} catch (const std::runtime_error& failure) {
  throw std::runtime_error("the secret's file " + file.u8string() + ' ' + failure.what());
}

}  // namespace host
