# The dialect: statements of the program turned into the engine's SQL, and the functions that those call.
find_package(ICU REQUIRED COMPONENTS uc i18n)
find_package(SqlCipher REQUIRED)
veldona_library(store_dialect platform/store
  SOURCES lexer.cpp dialect_split.cpp dialect_skeleton.cpp parser_words.cpp parser_expression.cpp parser.cpp
          tree_types.cpp tree_check.cpp tree_items.cpp writer.cpp writer_value.cpp writer_condition.cpp
          catalog.cpp literal.cpp dialect.cpp definitionsql.cpp
          functions.cpp functions_text.cpp functions_number.cpp functions_date.cpp
          functions_fold.cpp functions_like.cpp functions_collation.cpp
  LINKS runtime
  PRIVATE_LINKS SqlCipher::SqlCipher ICU::uc ICU::i18n)
