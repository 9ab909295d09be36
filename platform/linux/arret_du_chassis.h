#pragma once

namespace zuma {
class Chassis;
}

namespace zuma::linux_ {

/// The stop of a whole frame as a host wants it. What fails on the way is told in the frame's error
/// record, under `DéclencheAU`, and keeps nothing else from its turn.
///
/// - The outputs come first, commands out of service included, and are written before the frame's
///   own `DéclencheAU` comes to a watchdog board: one that hangs costs a second, and no output.
/// - Copying commands are held at their initial value until they are put in service again.
/// - `Watchdog.Enabled` is cleared behind the stop, so that no pass refreshes the board: it trips
///   10 ms later, and after `Réarme` stays stopped until the host enables it.
/// - A watchdog that is stopped already is left alone: a second arming would close for 10 ms what
///   it has opened.
void ArrêteLeChassis(Chassis& chassis);

/// The same outputs again, for a stop that goes on: what a host has moved comes back, what was not
/// written is tried again, and so is what a board may have lost. Buses and instruments get theirs
/// in the pass. A watchdog board that did not take the stop gets it as soon as it is ready. Costs a
/// few port writes, and waits for nothing.
void MaintientLArrêt(Chassis& chassis);

/// False while an output of the frame, or its watchdog board, does not hold what it was told last.
[[nodiscard]] bool ArrêtAtteint(Chassis& chassis);

}  // namespace zuma::linux_
