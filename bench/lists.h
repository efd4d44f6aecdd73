#pragma once

// Registers a list getter of each kind of record, with three records and with a full reply.
void RegisterLists();
