#ifndef MIRN_HOST_API_LANE_H
#define MIRN_HOST_API_LANE_H

namespace host {

/// Which threads a request takes, so that none of these keeps the others from being answered.
enum class Lane {
  kAtOnce,   ///< None: what neither waits nor works is answered by the thread of input and output.
  kOwn,      ///< The host's own answers, which wait for nobody.
  kReads,    ///< Calls of the plug-in that change nothing.
  kChanges,  ///< Calls of the plug-in that change something; they may take long.
  kParts,    ///< Pieces of answers that come in pieces; none of these is ever turned away.
};

}  // namespace host

#endif
