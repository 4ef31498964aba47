// Where the pages are.

/** The pages of the menu, those of a disk and a volume, and those that lead through something. */
export async function addressesOf(tab, host) {
  const menu = await tab.page.locator("#page-links a").evaluateAll((all) => all.map((each) => each.getAttribute("href")));
  const volume = await host.volume("System");
  const disk = (await host.ask("GET", "mirn/enddevices")).find((each) => each.arrayId === volume.arrayId);
  return [
    ...menu.map((address) => address.replace(/^#\/?/, "") || "overview"),
    `machine/disk/${disk.id}`,
    `machine/volume/${volume.id}`,
    "create",
    `replace/${disk.id}`,
  ];
}
