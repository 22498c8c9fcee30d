"""The faults of the campaign, and what an export may say about each."""

import dataclasses
import signal
import typing

import strikes

CANCELS = (signal.SIGINT, signal.SIGTERM)
ENDINGS = (*CANCELS, signal.SIGHUP, signal.SIGQUIT)

NO_ENCODERS = r"could not be asked for its encoders"  # a message of the front
ENDED_BY_SIGNAL = (r"It was ended by signal \d+\. Try again\.", NO_ENCODERS)
SYSTEM_ENDED_IT = (r"The system ended it, probably because memory ran out\.", NO_ENCODERS)
GONE = (r"No such file or directory",)
TRUNCATED = (
    r"It may be damaged",
    r"The source may be damaged",
    r"Invalid data found",
    r"The exported video does not end with the picture of the source",
    r"The video details could not be read",
)
NO_PROCESS = (
    r"Resource temporarily unavailable",
    NO_ENCODERS,
    r"Error while opening encoder",
    r"Cannot allocate memory",
)


@dataclasses.dataclass(frozen=True)
class Fault:
    """`moment`: "random", or "start" or "end" for the first or last 50 ms. `messages`: patterns; a failed export shows one.
    `cancels`: a cancellation. `kills`: ends the program without a message. `needs_disks`: needs small disks, and so root.
    `spoils_source`: the clip must be loaded again. `leaves_to_next`: the next export removes what is left.
    """

    name: str
    strike: typing.Callable
    messages: tuple = ()
    moment: str = "random"
    cancels: bool = False
    kills: bool = False
    needs_disks: bool = False
    spoils_source: bool = False
    leaves_to_next: bool = False


COMMON = (
    Fault("tool ended by SIGTERM or SIGINT", strikes.kill_tool(*CANCELS), ENDED_BY_SIGNAL),
    Fault("tool killed by SIGKILL", strikes.kill_tool(signal.SIGKILL), SYSTEM_ENDED_IT),
    Fault(
        "disk of the destination full", strikes.fill("outdisk", 1 << 20), ("No space left on device",), needs_disks=True
    ),
    Fault(
        "destination folder removed or renamed",
        strikes.remove_or_rename_result_folder,
        (r"was moved or removed during the export", r"The folder “.*” does not exist", *GONE),
    ),
    Fault(
        "destination folder read-only",
        strikes.make_result_folder_read_only,
        ("Permission denied",),
        leaves_to_next=True,
    ),
    Fault("source truncated", strikes.truncate_source, TRUNCATED, spoils_source=True),
    Fault("source removed", strikes.remove_source, GONE, spoils_source=True),
    Fault(
        "resource folder unreadable",
        strikes.make_resource_folder_unreadable,
        (r"^ff(mpeg|probe) is missing\.", "Permission denied"),
    ),
    Fault(
        "temporary folder full",
        strikes.fill("tmpdisk", 1 << 14),
        (r"The temporary folder “.*” is full", "No space left on device"),
        needs_disks=True,
    ),
    Fault("temporary folder removed", strikes.remove_temporary_folder, GONE),
    Fault("no descriptors", strikes.deny_descriptors, ("Too many open files",)),
    Fault("no processes", strikes.deny_processes, NO_PROCESS),
)

COMMAND_LINE = (
    *COMMON,
    Fault("cancelled within 50 ms of the start", strikes.signal_program(*CANCELS), moment="start", cancels=True),
    Fault("cancelled within 50 ms of the end", strikes.signal_program(*CANCELS), moment="end", cancels=True),
    Fault("ended by a signal", strikes.signal_program(*ENDINGS), cancels=True),
    Fault("program killed by SIGKILL", strikes.signal_program(signal.SIGKILL), kills=True),
    Fault("program and its second process killed", strikes.kill_program_and_cleanup, kills=True, leaves_to_next=True),
)

WINDOW = (
    *COMMON,
    Fault("cancelled within 50 ms of the start", strikes.press_cancel, moment="start", cancels=True),
    Fault("cancelled within 50 ms of the end", strikes.press_cancel, moment="end", cancels=True),
    Fault("quit", strikes.quit_program, kills=True),
    Fault("program killed by SIGKILL", strikes.signal_program(signal.SIGKILL), kills=True),
)
