#pragma once

// Registers single commands against the bare calls of the system.
void RegisterCommands();
