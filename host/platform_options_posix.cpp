#include <boost/program_options.hpp>

#include "platform_options.h"

namespace host {

namespace po = boost::program_options;

void addPlatformOptions(po::options_description& description, Options& options) {
  description.add_options()                                                                              //
      ("unix-socket", po::value(&options.unixSocket)->value_name("FILE"),                                //
       "where else to listen, for users of this machine, or off; otherwise host.sock in /run/mirn, "     //
       "$XDG_RUNTIME_DIR/mirn or beside the token")                                                      //
      ("tls-certificate", po::value(&options.tlsCertificate)->value_name("FILE"),                        //
       "PEM, with its chain; serve by TLS 1.2 and 1.3 instead of in clear")                              //
      ("tls-key", po::value(&options.tlsKey)->value_name("FILE"), "PEM, the certificate's private key")  //
      ("tls-client-ca", po::value(&options.tlsClientAuthorities)->value_name("FILE"),                    //
       "PEM, whose certificates of clients are trusted")                                                 //
      ("tls-client", po::value(&options.tlsClients)->value_name("ROLE:SUBJECT")->composing(),            //
       "what the client with this certificate may, such as observe:CN=monitor,O=Site; may repeat");
}

std::string whyMissing(const std::string&) { return {}; }

}  // namespace host
