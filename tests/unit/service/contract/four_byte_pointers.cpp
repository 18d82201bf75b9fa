// Compiled with all headers of the middleware in front: what they assert of their records is the
// test.
static_assert(sizeof(void*) == 4);
