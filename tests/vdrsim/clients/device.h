#pragma once

// What a program without the control library would do: bare system calls, literal bytes.

#include <stdint.h>

#define NORMAL_NODE "/qorv/devices/char/zaxdriver/ryn_vdr"
#define UPGRADE_NODE "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade"

struct envelope {
  unsigned char bytes[24];
};

// The 24 bytes of a command's argument, lengths and addresses as given.
struct envelope envelope(uint32_t in_length, const void* in, uint32_t out_length, void* out);
uint32_t out_length(const struct envelope* envelope);

// One command on an open device. Each returns 0 or an errno value.
int command(int device, uint32_t code, void* envelope);
int command_on_name(int device, uint32_t code, const char* name, void* out, uint32_t* room);
int get_word(int device, uint32_t code, uint32_t* value);
int set_word(int device, uint32_t code, uint32_t value);

// Tells whether an open that gave `device` has opened a node of an untouched datapath.
int answers(int device);

// One command with an open and a close of its own.
int set_instance(const char* name, uint32_t second);
int delete_instance(const char* name);

// A scenario ends the program with the line of the first expectation that does not hold.
_Noreturn void give_up(const char* file, int line, const char* expectation);
#define EXPECT(condition)                                      \
  do {                                                         \
    if (!(condition)) give_up(__FILE__, __LINE__, #condition); \
  } while (0)

int check_open_forms(void);
int check_open_flags(void);
int check_shared_descriptors(void);
int check_other_files(void);
int check_malformed(void);
int check_too_large(void);
int check_threads(void);
int check_beside_threads(void);
int check_storm(void);
int check_spellings(void);
int check_held_up(void);
int check_every_open(void);
int check_plain_file_requests(void);
int check_permissions(void);
int check_hidden(void);
int check_beside(void);

int count_signals(int number);
int print_value(int number);
