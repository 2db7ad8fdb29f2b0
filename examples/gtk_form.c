/* A small GTK window whose F1 key opens the help for the field in focus. The window stays alive while the help opens. */
#include <gtk/gtk.h>
#include <olh/olh.h>

static const char kManual[] = "olh_manual";
static const struct {
  const char* label;
  const char* topic; /* of the manual */
} kFields[] = {{"Documentation", "search_path"}, {"Browser", "viewers"}, {"Result", "result_codes"}};

static GThreadPool* caller;
static GtkLabel* status;

static const char* words_for(int result) {
  switch (result) {
    case OLH_RESULT_OK:
      return "Help is in your browser.";
    case OLH_RESULT_NOT_FOUND:
      return "The documentation was not found. Perhaps it is not installed.";
    case OLH_RESULT_NO_PROGRAM:
      return "There is no program that could show the documentation.";
    default:
      return "The program that shows the documentation did not open it.";
  }
}

/* In the thread of the window, the only one that may touch it. */
static gboolean tell(gpointer result) {
  gtk_label_set_text(status, words_for(GPOINTER_TO_INT(result)));
  return G_SOURCE_REMOVE;
}

/* In the thread of the calls. */
static void show_help(gpointer topic, gpointer unused) {
  (void)unused;
  g_idle_add(tell, GINT_TO_POINTER(OlhHelpCall(kManual, topic, OLH_DISPLAY_NORMAL)));
}

static gboolean on_key(GtkWidget* window, GdkEventKey* key, gpointer unused) {
  GtkWidget* field = gtk_window_get_focus(GTK_WINDOW(window));
  (void)unused;
  if (key->keyval != GDK_KEY_F1 || field == NULL) return GDK_EVENT_PROPAGATE;
  gtk_label_set_text(status, "Opening the help ...");
  g_thread_pool_push(caller, g_object_get_data(G_OBJECT(field), "topic"), NULL);
  return GDK_EVENT_STOP;
}

static GtkWidget* new_form(void) {
  GtkWidget* form = gtk_grid_new();
  gtk_grid_set_row_spacing(GTK_GRID(form), 6);
  gtk_grid_set_column_spacing(GTK_GRID(form), 12);
  guint row;
  for (row = 0; row < G_N_ELEMENTS(kFields); ++row) {
    GtkWidget* entry = gtk_entry_new();
    g_object_set_data(G_OBJECT(entry), "topic", (gpointer)kFields[row].topic);
    gtk_grid_attach(GTK_GRID(form), gtk_label_new(kFields[row].label), 0, (int)row, 1, 1);
    gtk_grid_attach(GTK_GRID(form), entry, 1, (int)row, 1, 1);
  }
  gtk_grid_attach(GTK_GRID(form), GTK_WIDGET(status), 0, (int)row, 2, 1);
  return form;
}

int main(int argc, char** argv) {
  GtkWidget* window;
  gtk_init(&argc, &argv);
  /* One thread for all calls: a call may take seconds, and the library wants one caller at a time. */
  caller = g_thread_pool_new(show_help, NULL, 1, TRUE, NULL);
  status = GTK_LABEL(gtk_label_new("F1 helps with the field in focus."));
  window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  gtk_window_set_title(GTK_WINDOW(window), "Form with help");
  gtk_container_add(GTK_CONTAINER(window), new_form());
  g_signal_connect(window, "key-press-event", G_CALLBACK(on_key), NULL);
  g_signal_connect(window, "destroy", G_CALLBACK(gtk_main_quit), NULL);
  gtk_widget_show_all(window);
  gtk_main();
  g_thread_pool_free(caller, TRUE, TRUE); /* a call that has begun comes to its end */
  return 0;
}
