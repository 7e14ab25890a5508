/* orders {backwards|forwards}: what it takes to make the nodes of a tree and to give them back, on the C
   library that this is linked with. That library keeps free blocks in lists, and the next load takes
   them in the order in which it finds them there: so the time of a destruction alone tells little.

   Reads what `xmldom-bench records` prints of a document. Makes blocks for each node, its name and its
   value, as large as those of xmldom and in the order in which a load makes them, and gives them back
   in one of two orders: backwards as xmldom does, the siblings that follow a node before what is below
   it, so that most nodes go after those that were made later; or forwards, what is below a node before
   it, and the siblings that follow after it. Does so again and again, as a program does that replaces
   one document by the next. Prints the number of nodes, and the nanoseconds a node that making them and
   giving them back take. It is in C because Debian has no C++ library for musl. */

#define _POSIX_C_SOURCE 200809L

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

/* As large as a node of xmldom, which bench/Records.cpp asserts. */
typedef struct Node {
  void *table;
  size_t references;
  char *name;
  char *value;
  struct Node *next;
  struct Node *child;
  struct Node *attribute;
  struct Node *parent;
  struct Node *back; /* the node to return to while the tree is taken apart */
  size_t type;
} Node;

/* A node of the document. */
typedef struct Record {
  int depth;
  int is_attribute;
  long name;  /* length, or -1 for none */
  long value; /* length, or -1 for none */
} Record;

static const size_t kLeastNodes = 400000; /* that are made in one measurement */
static const int kMeasurements = 9;

static void *allocate(size_t size) {
  void *block = malloc(size);
  if (block == NULL) abort();
  return block;
}

static char *text_of(long length) {
  if (length < 0) return NULL;
  char *text = allocate((size_t)length + 1);
  memset(text, 'x', (size_t)length);
  text[length] = '\0';
  return text;
}

/* Makes the tree of the records. `open` has room for all levels, and holds the node that was made last
   on each. */
static Node *make(const Record *records, size_t count, Node **open) {
  Node *root = NULL;
  for (size_t i = 0; i < count; ++i) {
    const Record *record = &records[i];
    Node *node = allocate(sizeof(Node));
    memset(node, 0, sizeof(Node));
    node->name = text_of(record->name);
    node->value = text_of(record->value);
    const int depth = record->depth;
    if (depth == 0) {
      root = node;
    } else {
      Node *parent = open[depth - 1];
      node->parent = parent;
      Node **head = record->is_attribute ? &parent->attribute : &parent->child;
      *(*head == NULL ? head : &open[depth]->next) = node;
    }
    open[depth] = node;
  }
  return root;
}

static void release(Node *node) {
  free(node->name);
  free(node->value);
  free(node);
}

/* The siblings that follow, then the children, then the attributes, then the node. */
static void destroy_backwards(Node *node) {
  node->back = NULL;
  while (node != NULL) {
    Node **link = node->next != NULL ? &node->next : node->child != NULL ? &node->child : &node->attribute;
    Node *target = *link;
    if (target != NULL) {
      *link = NULL;
      target->back = node;
      node = target;
    } else {
      Node *back = node->back;
      release(node);
      node = back;
    }
  }
}

/* The attributes, then the children, then the node, then the siblings that follow. */
static void destroy_forwards(Node *node) {
  while (node != NULL) {
    Node **link = node->attribute != NULL ? &node->attribute : &node->child;
    Node *target = *link;
    if (target != NULL) {
      *link = NULL;
      node = target;
    } else {
      Node *next = node->next != NULL ? node->next : node->parent;
      release(node);
      node = next;
    }
  }
}

static double processor_nanoseconds(void) {
  struct timespec now;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return (double)now.tv_sec * 1e9 + (double)now.tv_nsec;
}

static Record *read_records(size_t *count) {
  size_t room = 1024;
  Record *records = allocate(room * sizeof(Record));
  Record record;
  *count = 0;
  while (scanf("%d %d %ld %ld", &record.depth, &record.is_attribute, &record.name, &record.value) == 4) {
    if (*count == room) {
      room *= 2;
      records = realloc(records, room * sizeof(Record));
      if (records == NULL) abort();
    }
    records[(*count)++] = record;
  }
  return records;
}

int main(int argc, char **argv) {
  if (argc != 2) return 2;
  const int forwards = strcmp(argv[1], "forwards") == 0;
  if (!forwards && strcmp(argv[1], "backwards") != 0) return 2;
  size_t count;
  Record *records = read_records(&count);
  if (count == 0) return 1;
  Node **open = allocate(count * sizeof(Node *));
  const size_t rounds = kLeastNodes / count + 1;
  double least_made = 1e30;
  double least_destroyed = 1e30;
  for (int measurement = -1; measurement < kMeasurements; ++measurement) { /* the first warms up */
    double made = 0;
    double destroyed = 0;
    for (size_t round = 0; round < rounds; ++round) {
      const double start = processor_nanoseconds();
      Node *root = make(records, count, open);
      const double middle = processor_nanoseconds();
      (forwards ? destroy_forwards : destroy_backwards)(root);
      const double end = processor_nanoseconds();
      made += middle - start;
      destroyed += end - middle;
    }
    if (measurement >= 0 && made + destroyed < least_made + least_destroyed) {
      least_made = made;
      least_destroyed = destroyed;
    }
  }
  const double nodes = (double)rounds * (double)count;
  printf("%zu\t%.2f\t%.2f\n", count, least_made / nodes, least_destroyed / nodes);
  return 0;
}
