# The event log and the debug viewer.
