#ifndef MIRN_TESTS_SUPPORT_TEST_CERTIFICATE_H
#define MIRN_TESTS_SUPPORT_TEST_CERTIFICATE_H

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <memory>
#include <string>

/// A certificate and its key, made anew for one test; valid for a day.
class TestCertificate {
 public:
  /// Signed by itself, and may sign others.
  explicit TestCertificate(const std::string& name);

  /// Signed by `authority`.
  TestCertificate(const std::string& name, const TestCertificate& authority);

  /// PEM.
  std::string certificate() const;
  std::string key() const;

 private:
  struct Freeing {
    void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
    void operator()(X509* certificate) const { X509_free(certificate); }
  };

  TestCertificate(const std::string& name, const TestCertificate* authority);

  std::unique_ptr<EVP_PKEY, Freeing> m_key;
  std::unique_ptr<X509, Freeing> m_certificate;
};

#endif
