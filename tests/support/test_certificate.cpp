#include "support/test_certificate.h"

#include <openssl/bio.h>
#include <openssl/ec.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <stdexcept>

namespace {

constexpr long kLife = 86400;
constexpr long kVersion3 = 2;

void require(bool isDone) {
  if (!isDone) throw std::runtime_error("a certificate cannot be made");
}

void addExtension(X509* certificate, int kind, const char* value) {
  X509_EXTENSION* const extension = X509V3_EXT_conf_nid(nullptr, nullptr, kind, value);
  require(extension != nullptr);
  X509_add_ext(certificate, extension, -1);
  X509_EXTENSION_free(extension);
}

template <class Write>
std::string textOf(Write write) {
  BIO* const memory = BIO_new(BIO_s_mem());
  require(write(memory) == 1);
  char* text = nullptr;
  const long size = BIO_get_mem_data(memory, &text);
  std::string result(text, static_cast<std::size_t>(size));
  BIO_free(memory);
  return result;
}

}  // namespace

TestCertificate::TestCertificate(const std::string& name) : TestCertificate(name, nullptr) {}

TestCertificate::TestCertificate(const std::string& name, const TestCertificate& authority)
    : TestCertificate(name, &authority) {}

TestCertificate::TestCertificate(const std::string& name, const TestCertificate* authority)
    : m_key(EVP_EC_gen("P-256")), m_certificate(X509_new()) {
  static long serial = 0;
  X509* const made = m_certificate.get();
  X509_set_version(made, kVersion3);
  ASN1_INTEGER_set(X509_get_serialNumber(made), ++serial);
  X509_gmtime_adj(X509_getm_notBefore(made), -kLife);
  X509_gmtime_adj(X509_getm_notAfter(made), kLife);
  X509_set_pubkey(made, m_key.get());
  const auto* const text = reinterpret_cast<const unsigned char*>(name.c_str());
  X509_NAME_add_entry_by_txt(X509_get_subject_name(made), "CN", MBSTRING_UTF8, text, -1, -1, 0);
  const TestCertificate& signer = authority ? *authority : *this;
  X509_set_issuer_name(made, X509_get_subject_name(signer.m_certificate.get()));
  if (!authority) addExtension(made, NID_basic_constraints, "critical,CA:TRUE");
  addExtension(made, NID_subject_alt_name, "IP:127.0.0.1,DNS:localhost");
  require(X509_sign(made, signer.m_key.get(), EVP_sha256()) > 0);
}

std::string TestCertificate::certificate() const {
  return textOf([&](BIO* memory) { return PEM_write_bio_X509(memory, m_certificate.get()); });
}

std::string TestCertificate::key() const {
  return textOf([&](BIO* memory) {
    return PEM_write_bio_PrivateKey(memory, m_key.get(), nullptr, nullptr, 0, nullptr, nullptr);
  });
}
