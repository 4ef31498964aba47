import { render } from "preact";
import { useEffect, useState } from "preact/hooks";
import { ask } from "./api/client";
import type { Caller, Service } from "./api/schema";
import { PictureContext } from "./live/machine_context";
import { kNoPicture, LivePicture, type Picture } from "./live/picture";
import { type Place, usePlace } from "./live/place";
import { RoleContext } from "./live/rights";
import { useSignIn } from "./live/signed_in";
import { language } from "./messages/language";
import { messages } from "./messages/messages";
import { AboutPage } from "./pages/about";
import { AccessPage } from "./pages/access";
import { AlarmsPage } from "./pages/alarms";
import { CreateVolumePage } from "./pages/create_volume";
import { HistoryPage } from "./pages/history";
import { JobsPage } from "./pages/jobs";
import { MachinePage } from "./pages/machine";
import { OverviewPage } from "./pages/overview";
import { ReadinessPage } from "./pages/readiness";
import { ReplaceDiskPage } from "./pages/replace_disk";
import { SettingsPage } from "./pages/settings";
import { SignInPage } from "./pages/sign_in";
import { WhatIfPage } from "./pages/whatif";
import { Shell } from "./parts/shell";
import { SimulatorDrawer } from "./parts/simulator_drawer";

function App() {
  const { state, giveToken, signOut } = useSignIn();
  if (state.kind === "asking") {
    return (
      <main class="sign-in">
        <h1 class="muted">{messages.signIn.busy}</h1>
      </main>
    );
  }
  if (state.kind === "stranger") return <SignInPage words={state.words} onToken={giveToken} />;
  return <Console caller={state.caller} onSignOut={signOut} />;
}

function Console({ caller, onSignOut }: { caller: Caller; onSignOut: () => void }) {
  const place = usePlace();
  const [picture, setPicture] = useState(kNoPicture);
  const [service, setService] = useState<Service | null>(null);
  useEffect(() => {
    const live = new LivePicture(setPicture);
    live.start();
    // Without it there is no banner; what else is wrong then the picture tells.
    ask<Service>("").then(setService, () => undefined);
    return () => live.stop();
  }, []);
  useEffect(() => {
    document.title = `${messages.pages[place.page]} – ${messages.product}`;
  }, [place.page]);
  return (
    <Shell
      place={place}
      caller={caller}
      service={service}
      freshness={picture.freshness}
      onSignOut={onSignOut}
      drawer={<SimulatorDrawer picture={picture} page={place.page} role={caller.role} />}
    >
      {picture.failure && (
        <p class="refusal" role="alert">
          {messages.failed(picture.failure.status === 0 ? messages.noAnswer : picture.failure.message)}
        </p>
      )}
      <RoleContext.Provider value={caller.role}>
        <PictureContext.Provider value={picture}>
          <PageOf picture={picture} place={place} caller={caller} service={service} onSignOut={onSignOut} />
        </PictureContext.Provider>
      </RoleContext.Provider>
    </Shell>
  );
}

interface PageProps {
  picture: Picture;
  place: Place;
  caller: Caller;
  service: Service | null;
  onSignOut: () => void;
}

function PageOf({ picture, place, caller, service, onSignOut }: PageProps) {
  const { role } = caller;
  switch (place.page) {
    case "overview":
      return <OverviewPage picture={picture} />;
    case "machine":
      return <MachinePage picture={picture} place={place} />;
    case "jobs":
      return <JobsPage picture={picture} />;
    case "alarms":
      return <AlarmsPage picture={picture} role={role} />;
    case "history":
      return <HistoryPage key={place.object?.id} picture={picture} place={place} role={role} />;
    case "create":
      return <CreateVolumePage picture={picture} place={place} />;
    case "replace":
      return <ReplaceDiskPage picture={picture} diskId={place.rest[0] ?? ""} />;
    case "readiness":
      return <ReadinessPage picture={picture} />;
    case "whatif":
      return <WhatIfPage picture={picture} />;
    case "settings":
      return <SettingsPage role={role} />;
    case "access":
      return <AccessPage caller={caller} onSignOut={onSignOut} />;
    case "about":
      return <AboutPage service={service} role={role} />;
  }
}

document.documentElement.lang = language;
const root = document.getElementById("app");
if (root) render(<App />, root);
