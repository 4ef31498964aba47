#include "manual/manual_pages.h"

#include "configuration/option_table.h"
#include "options.h"
#include "system/stop_signal.h"
#include "troff.h"

namespace host {

namespace {

/// A section's first line is what is looked for by name.
void writeName(TroffPage& page, const std::string& name, const std::string& what) {
  page.section("NAME");
  page.paragraph(name + " - " + what);
}

std::string sentenceOf(const Option& option) {
  std::string text = option.fullHelp();
  if (!option.range.empty() && !option.isSwitch()) text += "; " + option.range;
  if (!option.isSwitch() && !option.defaultText.empty()) text += "; otherwise " + option.defaultText;
  return text + '.';
}

/// Every option of the file, or of the command line.
void writeOptions(TroffPage& page, bool isFile) {
  const Option* last = nullptr;
  for (const Option& option : optionTable()) {
    if (isFile ? !option.isForFile() : !option.isForLine()) continue;
    if (last == nullptr || last->group != option.group) page.subsection(headingOf(option.group));
    last = &option;
    const std::string argument = isFile && option.isSwitch() ? "yes|no" : option.argument;
    page.item(isFile ? option.name + " =" : "--" + option.name, argument, sentenceOf(option));
  }
}

}  // namespace

std::string programPage(const std::string& date) {
  TroffPage page("mirn-host", 8, versionNumber(), date);
  writeName(page, "mirn-host", "serve a storage plug-in over HTTP");
  page.section("SYNOPSIS");
  page.paragraph("mirn-host --module FILE [option ...]");
  page.paragraph("mirn-host --config FILE [option ...]");
  page.paragraph("mirn-host token add|list|revoke ...");
  page.paragraph("mirn-host sign-in ...");
  page.section("DESCRIPTION");
  page.paragraph("Loads a plug-in module and serves it as HTTP with JSON until it gets " + stopSignalNames() +
                 ". A second one ends it at once. SIGHUP has it read its tokens and its certificate again.");
  page.section("OPTIONS");
  page.paragraph("Options stand in full. A switch may be said with its word, such as --insecure=no.");
  writeOptions(page, false);
  page.paragraph("Whom it tells of alarms stands in the configuration file only: mirn-host.conf(5).");
  page.section("COMMANDS");
  page.item("token", "add NAME ROLE",
            "Makes a token and prints it, once. ROLE is observe, operate or administer.");
  page.item("token", "list", "Prints name, role and time of each.");
  page.item("token", "revoke NAME", "Takes one away; a running host follows within two seconds.");
  page.item("sign-in", "", "Prints an address by which a browser signs in, once, within ten minutes.");
  page.section("EXIT STATUS");
  page.item("0", "", "After an orderly stop, and where --check-config found nothing wrong.");
  page.item("1", "", "The host could not start or stop; a line on standard error says why.");
  page.item("2", "",
            "The command line, the configuration file, or a socket from the service manager is wrong.");
  page.section("FILES");
  page.item("/etc/mirn/host.conf", "", "The configuration of the system's service.");
  page.item("/var/lib/mirn", "", "Its tokens and settings.");
  page.item("/run/mirn/host.sock", "", "Where users of this machine reach it without a token.");
  page.section("SEE ALSO");
  page.paragraph("mirn-host.conf(5), systemctl(1), journalctl(1)");
  return page.text();
}

std::string configurationPage(const std::string& date) {
  TroffPage page("mirn-host.conf", 5, versionNumber(), date);
  writeName(page, "mirn-host.conf", "configuration file of mirn-host");
  page.section("SYNOPSIS");
  page.paragraph("/etc/mirn/host.conf");
  page.section("DESCRIPTION");
  page.paragraph(
      "A line each, KEY = VALUE. The value goes to the last character of the line that is no blank. Empty "
      "lines and those that begin with # say nothing; elsewhere # is a character as any. What may repeat has "
      "several lines. A wrong line is refused with its number and the reason.");
  page.paragraph(
      "The file is read where mirn-host is told to by --config. What its command line says goes ahead of the "
      "file. mirn-host --config FILE --check-config tells whether a file is good.");
  page.section("KEYS");
  writeOptions(page, true);
  page.section("EXAMPLE");
  page.example("module = /usr/lib/mirn/mirn_plugin.so\nlibrary = simulator\nport = 8080\nlog-requests = yes");
  page.section("SEE ALSO");
  page.paragraph("mirn-host(8)");
  return page.text();
}

}  // namespace host
