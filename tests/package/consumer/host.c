/* A host outside the project: everything that it knows of the library comes from the installed tree. */
#include <olh/olh.h>
#include <stdio.h>

int main(void) {
  printf("%s %d %d\n", OlhVersion(), OlhHelpTest("guide", ""), OlhHelpTest("absent", ""));
  return 0;
}
