-- The time at which the catalogue was imported; blank for the one that came with the program.
ALTER TABLE store_state ADD COLUMN CatalogueDate TEXT NOT NULL DEFAULT '';
