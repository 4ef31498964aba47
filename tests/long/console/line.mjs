// A line between browser and host that can be cut while both live on.
import net from "node:net";

export class Line {
  constructor(port) {
    this.port = port; // of the host
    this.sockets = new Set();
  }

  /** Resolves when it carries; the near end's port stays the same. */
  async join() {
    this.server = net.createServer((near) => this.carry(near));
    await new Promise((resolve) => this.server.listen(this.nearPort ?? 0, "127.0.0.1", resolve));
    this.nearPort = this.server.address().port;
  }

  carry(near) {
    const far = net.connect(this.port, "127.0.0.1");
    const ends = [near, far];
    for (const end of ends) {
      this.sockets.add(end);
      end.on("error", () => undefined); // the other end went
      end.on("close", () => {
        this.sockets.delete(end);
        ends.forEach((each) => each.destroy());
      });
    }
    near.pipe(far);
    far.pipe(near);
  }

  async cut() {
    const closed = new Promise((resolve) => this.server.close(resolve));
    for (const socket of this.sockets) socket.destroy();
    await closed;
  }

  address(of) {
    const there = new URL(of);
    there.port = String(this.nearPort);
    return there.href;
  }
}
