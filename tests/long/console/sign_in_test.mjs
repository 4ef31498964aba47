// Ways in and out, and sessions that end.
import assert from "node:assert/strict";
import { onOwnHosts } from "../../web/stage.mjs";

const story = onOwnHosts();
const kUsed = "This address has been used already, or it is older than ten minutes.";

const keptNothing = (tab) => tab.page.evaluate(() => sessionStorage.length === 0);

story("the printed address signs in, once", async ({ host, open }) => {
  const address = await host.signInAddress("operate");
  const first = await open();
  await first.page.goto(address);
  await first.see("[data-role=operate]");
  assert.equal(await first.page.evaluate(() => location.hash), "");
  await first.page.reload();
  await first.see("[data-role=operate]");

  const second = await open();
  second.expect(/401/);
  await second.page.goto(address);
  await second.seeText(kUsed);
  assert.ok(await keptNothing(second));
  await first.visit("alarms"); // who was first is still in
  await first.see("[data-alarm]");
});

story("an address that is no more, since the host that made it has gone", async ({ host, open }) => {
  const address = await host.signInAddress("operate");
  await host.stop();
  await host.start();
  const tab = await open();
  tab.expect(/401/);
  await tab.page.goto(address);
  await tab.seeText(kUsed);
  await tab.requireAccessible();
  // What is typed next to it helps on at once.
  await tab.giveToken(host.token());
  await tab.see("[data-role=administer]");
});

story("a token signs in; a wrong one does not, and is not kept", async ({ host, open }) => {
  const tab = await open();
  await tab.page.goto(host.address);
  await tab.requireOff("Sign in");
  tab.expect(/401/);
  await tab.giveToken("mirn_wrong");
  await tab.seeText("The host does not know this token.");
  assert.ok(await keptNothing(tab));
  await tab.giveToken(`  ${host.token()} `); // as it was copied
  await tab.see("[data-role=administer]");
  await tab.visit("access");
  await tab.seeText("You signed in with a token, which lasts until it is revoked.");
});

story("another address in an open tab makes its owner another one", async ({ host, signedIn }) => {
  const tab = await signedIn("observe");
  await tab.see("[data-role=observe]");
  await tab.page.goto(await host.signInAddress("administer"));
  await tab.see("[data-role=administer]");
});

story("signing out ends the session: going back shows nothing, and its token is worth nothing", async ({ host, signedIn }) => {
  const tab = await signedIn("operate");
  await tab.visit("machine");
  await tab.see("[data-controller]");
  const token = await tab.page.evaluate(() => sessionStorage.getItem("token"));
  await tab.press("Sign out");
  await tab.see("#token");
  assert.ok(await keptNothing(tab));
  await tab.page.goBack();
  await tab.see("#token");
  const answer = await fetch(`${host.address}api/v1/session`, { headers: { Authorization: `Bearer ${token}` } });
  assert.equal(answer.status, 401);
});

story("a session that ends while one works is told, and the page behind it comes back with the next one", async ({ host, signedIn }) => {
  const tab = await signedIn("operate");
  const volume = await host.volume("Scratch");
  await tab.visit(`machine/volume/${volume.id}`);
  await tab.press("Rename volume");
  await tab.fill("Name", "Typed");
  // Another tab of the same session ends it.
  const token = await tab.page.evaluate(() => sessionStorage.getItem("token"));
  tab.expect(/401|ERR_INCOMPLETE/);
  const ended = await fetch(`${host.address}api/v1/session`, { method: "DELETE", headers: { Authorization: `Bearer ${token}` } });
  assert.ok(ended.ok);
  await tab.seeText("The session has ended.");
  await tab.giveToken(host.token());
  await tab.see("[data-role=administer]");
  await tab.see("[data-panel=volume]");
});
