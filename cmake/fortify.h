/* Read before each source of a tool. No option could do this: a distribution's own, which may come by
   way of -Wp, would be defined anew. Fortification takes what the optimiser knows of sizes. */
#if defined(__OPTIMIZE__) && !defined(_FORTIFY_SOURCE)
#define _FORTIFY_SOURCE 2
#endif
