// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// What the engine keeps of its own in a server's database: the schema "zelqor" with the functions of the dialect, the
/// types and collations of its columns, and the record of who changed which table.
namespace Server_Functions
{
/// Stands in the schema's comment; a database with a lower number gets the functions anew.
inline constexpr int Version = 1;

/// Where each of several programs that come at once waits for the first one; then the schema with its record.
/// :LOWER and :UPPER are collations that know the cases of letters, :SORT is what makes the dictionary's.
inline constexpr char16_t Schema[] = uR"sql(
CREATE SCHEMA IF NOT EXISTS zelqor;
DO $do$ BEGIN
  IF to_regtype('zelqor.date_text') IS NULL THEN CREATE DOMAIN zelqor.date_text AS text COLLATE "C"; END IF;
  IF NOT EXISTS (SELECT FROM pg_collation WHERE collname = 'zelqor_sort' AND collnamespace = 'zelqor'::regnamespace) THEN
    CREATE COLLATION zelqor.zelqor_sort :SORT;
  END IF;
END $do$;
CREATE TABLE IF NOT EXISTS zelqor.changes (tx xid8, what text, who text, at timestamptz DEFAULT now(),
  PRIMARY KEY (tx, what));
CREATE OR REPLACE FUNCTION zelqor.note_change() RETURNS trigger LANGUAGE plpgsql AS $f$ BEGIN
  INSERT INTO zelqor.changes (tx, what, who) VALUES (pg_current_xact_id(), TG_TABLE_NAME,
    current_setting('zelqor.program', true)) ON CONFLICT DO NOTHING;
  RETURN NULL;
END $f$;

CREATE OR REPLACE FUNCTION zelqor.zelqor_fold(text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
  SELECT replace(replace(lower(replace(replace($1, chr(8490), chr(64976)), chr(304), chr(64977)) COLLATE :LOWER),
    chr(64976), chr(8490)), chr(64977), chr(304)) COLLATE "C" $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_ucase(text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
  SELECT upper($1 COLLATE :UPPER) COLLATE "C" $f$;
)sql";

/// Texts, counted in UTF-16 units as the dialect counts them.
inline constexpr char16_t Texts[] = uR"sql(
CREATE OR REPLACE FUNCTION zelqor.zelqor_lcase(text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
  SELECT zelqor.zelqor_fold($1) $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_len(text) RETURNS integer LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
  SELECT CASE WHEN octet_length($1) = length($1) THEN length($1)
    ELSE length($1) + length(regexp_replace($1, '[\u0001-\uFFFF]', '', 'g')) END $f$;
CREATE OR REPLACE FUNCTION zelqor.chars(t text, units bigint) RETURNS integer LANGUAGE plpgsql IMMUTABLE STRICT
PARALLEL SAFE AS $f$ DECLARE n integer := 0; left_over bigint := units; c text; BEGIN
  IF octet_length(t) = length(t) OR t !~ '[^\u0001-\uFFFF]' THEN
    RETURN least(greatest(units, 0), length(t));
  END IF;
  FOREACH c IN ARRAY regexp_split_to_array(t, '') LOOP
    left_over := left_over - zelqor.zelqor_len(c);
    EXIT WHEN left_over < 0;
    n := n + 1;
  END LOOP;
  RETURN n;
END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_left(text, double precision) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE
AS $f$ SELECT substr($1, 1, zelqor.chars($1, trunc($2)::bigint)) $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_right(text, double precision) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE
AS $f$ SELECT CASE WHEN $2 < 1 THEN ''
  ELSE substr($1, zelqor.chars($1, zelqor.zelqor_len($1) - trunc($2)::bigint) + 1) END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_mid(text, double precision, double precision DEFAULT NULL) RETURNS text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $f$ DECLARE rest text; BEGIN
  IF $2 < 1 THEN RAISE EXCEPTION 'Data type mismatch: the start of mid must be at least 1.' USING ERRCODE = 'ZQ001'; END IF;
  rest := substr($1, zelqor.chars($1, trunc($2)::bigint - 1) + 1);
  RETURN CASE WHEN $3 IS NULL THEN rest ELSE substr(rest, 1, zelqor.chars(rest, trunc($3)::bigint)) END;
END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_instr(start double precision, t text, key text, how double precision)
RETURNS integer LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$ DECLARE s integer; p integer; rest text; BEGIN
  s := zelqor.chars(t, trunc(start)::bigint - 1);
  rest := substr(t, s + 1);
  p := CASE WHEN how = 0 THEN position(key in rest) ELSE position(zelqor.zelqor_fold(key) in zelqor.zelqor_fold(rest)) END;
  RETURN CASE WHEN p = 0 THEN 0 ELSE zelqor.zelqor_len(substr(t, 1, s + p - 1)) + 1 END;
END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_like(pattern text, t text) RETURNS boolean LANGUAGE plpgsql IMMUTABLE STRICT
PARALLEL SAFE AS $f$ DECLARE e text := '^'; p text := zelqor.zelqor_fold(pattern); i integer := 1; c text; j integer;
  inside text; BEGIN
  WHILE i <= length(p) LOOP
    c := substr(p, i, 1);
    j := CASE WHEN c = '[' THEN position(']' in substr(p, i + 1)) ELSE 0 END;
    IF j > 0 THEN
      inside := regexp_replace(substr(p, i + 1, j - 1), '([\\\[\]])', '\\\1', 'g');
      inside := regexp_replace(inside, '^!', '^');
      e := e || CASE WHEN inside IN ('', '^') THEN '' ELSE '[' || inside || ']' END;
      i := i + j + 1;
    ELSE
      e := e || CASE c WHEN '%' THEN '.*' WHEN '_' THEN '.' ELSE regexp_replace(c, '([^[:alnum:][:space:]])', '\\\1') END;
      i := i + 1;
    END IF;
  END LOOP;
  RETURN zelqor.zelqor_fold(t) ~ (e || '$');
END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_join(text, text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
  SELECT coalesce($1, '') || coalesce($2, '') $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_str(integer) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS
  $f$ SELECT $1::text $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_str(bigint) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS
  $f$ SELECT $1::text $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_str(double precision) RETURNS text LANGUAGE sql STABLE PARALLEL SAFE
  SET extra_float_digits = 0 AS $f$ SELECT upper($1::text) $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_str(text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS
  $f$ SELECT $1 $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_str(bytea) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS
  $f$ SELECT convert_from($1, 'UTF8') $f$;
)sql";

/// Dates, which are texts as they are in a file: "YYYY-MM-DD", with " HH:MM:SS" unless it is midnight.
inline constexpr char16_t Dates[] = uR"sql(
CREATE OR REPLACE FUNCTION zelqor.stored(text) RETURNS text LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$
DECLARE p text[]; y integer; m integer; d integer; clock text; BEGIN
  p := regexp_match($1, '^\s*(\d{4})([-/.])(\d{1,2})\2(\d{1,2})(?:[ T] *(\d{1,2}):(\d{1,2})(?::(\d{1,2}))?)?\s*$');
  IF p IS NULL THEN RETURN NULL; END IF;
  y := p[1]; m := p[3]; d := p[4];
  IF y < 1 OR m NOT BETWEEN 1 AND 12 OR d < 1 THEN RETURN NULL; END IF;
  IF d > extract(day from make_date(y, m, 1) + interval '1 month - 1 day') THEN RETURN NULL; END IF;
  IF p[5]::integer > 23 OR p[6]::integer > 59 OR p[7]::integer > 59 THEN RETURN NULL; END IF;
  clock := lpad(coalesce(p[5], '0'), 2, '0') || ':' || lpad(coalesce(p[6], '0'), 2, '0') || ':' ||
    lpad(coalesce(p[7], '0'), 2, '0');
  RETURN p[1] || '-' || lpad(p[3], 2, '0') || '-' || lpad(p[4], 2, '0') ||
    CASE WHEN clock = '00:00:00' THEN '' ELSE ' ' || clock END;
END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_date(text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
  SELECT coalesce(zelqor.stored($1), $1) $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_short(text, separator text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE
AS $f$ SELECT CASE WHEN zelqor.stored($1) IS NULL THEN $1 ELSE replace(zelqor.stored($1), '-', $2) END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_year(text) RETURNS integer LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
  SELECT substr(zelqor.stored($1), 1, 4)::integer $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_month(text) RETURNS integer LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
  SELECT substr(zelqor.stored($1), 6, 2)::integer $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_day(text) RETURNS integer LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
  SELECT substr(zelqor.stored($1), 9, 2)::integer $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_now() RETURNS text LANGUAGE sql VOLATILE PARALLEL SAFE AS $f$
  SELECT zelqor.zelqor_date(to_char(clock_timestamp(), 'YYYY-MM-DD HH24:MI:SS')) $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_today() RETURNS text LANGUAGE sql STABLE PARALLEL SAFE AS $f$
  SELECT to_char(now(), 'YYYY-MM-DD') $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_format(t text, pattern text DEFAULT NULL) RETURNS text LANGUAGE plpgsql STABLE
PARALLEL SAFE AS $f$ DECLARE s text := zelqor.stored(t); r text := ''; part text; c text; n integer; v text;
  hour boolean := false; BEGIN
  IF s IS NULL THEN RETURN t; END IF;
  IF pattern IS NULL THEN RETURN zelqor.zelqor_short(t, coalesce(nullif(current_setting('zelqor.separator', true), ''), '-')); END IF;
  s := s || CASE WHEN length(s) = 10 THEN ' 00:00:00' ELSE '' END;
  FOR part IN SELECT m[1] FROM regexp_matches(pattern, '([yY]+|[mM]+|[dD]+|[hH]+|[nN]+|[sS]+|.)', 'g') AS m LOOP
    c := lower(left(part, 1)); n := length(part);
    v := CASE c WHEN 'm' THEN CASE WHEN hour THEN substr(s, 15, 2) ELSE substr(s, 6, 2) END WHEN 'd' THEN substr(s, 9, 2)
      WHEN 'h' THEN substr(s, 12, 2) WHEN 'n' THEN substr(s, 15, 2) WHEN 's' THEN substr(s, 18, 2) END;
    r := r || CASE WHEN c = 'y' THEN CASE WHEN n > 2 THEN left(s, 4) ELSE substr(s, 3, 2) END
      WHEN v IS NULL THEN part WHEN n > 1 THEN v ELSE v::integer::text END;
    hour := CASE WHEN c = 'h' THEN true WHEN c ~ '[[:alpha:]]' THEN false ELSE hour END;
  END LOOP;
  RETURN r;
END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_format(double precision, text DEFAULT NULL) RETURNS text LANGUAGE sql STABLE
PARALLEL SAFE AS $f$ SELECT zelqor.zelqor_str($1) $f$;
)sql";

/// Conversions to the type of a column, which fail where the value is none.
inline constexpr char16_t Values[] = uR"sql(
CREATE OR REPLACE FUNCTION zelqor.mismatch(value text, wanted text, named text) RETURNS text LANGUAGE plpgsql IMMUTABLE
PARALLEL SAFE AS $f$ BEGIN
  RAISE EXCEPTION 'Data type mismatch: ''%'' is no %.', left(value, 60),
    wanted || CASE WHEN named = '' THEN '' ELSE ' for the column ''' || named || '''' END USING ERRCODE = 'ZQ001';
END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_as_single(text, text) RETURNS double precision LANGUAGE sql IMMUTABLE PARALLEL
SAFE AS $f$ SELECT CASE WHEN $1 IS NULL THEN NULL
  WHEN $1 ~ '^\s*[-+]?(\d+\.?\d*|\.\d+)([eE][-+]?\d+)?\s*$' THEN $1::double precision
  ELSE zelqor.mismatch($1, 'number', $2)::double precision END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_as_single(double precision, text) RETURNS double precision LANGUAGE sql
IMMUTABLE PARALLEL SAFE AS $f$ SELECT $1 $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_number(text) RETURNS double precision LANGUAGE sql IMMUTABLE PARALLEL SAFE AS
  $f$ SELECT zelqor.zelqor_as_single($1, '') $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_number(double precision) RETURNS double precision LANGUAGE sql IMMUTABLE
PARALLEL SAFE AS $f$ SELECT $1 $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_as_long(double precision, text) RETURNS integer LANGUAGE sql STABLE PARALLEL SAFE
AS $f$ SELECT CASE WHEN $1 IS NULL OR round($1) BETWEEN -2147483648 AND 2147483647 THEN round($1)::integer
  ELSE zelqor.mismatch(zelqor.zelqor_str($1), 'whole number', $2)::integer END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_as_long(text, text) RETURNS integer LANGUAGE sql STABLE PARALLEL SAFE AS $f$
  SELECT CASE WHEN $1 IS NULL OR $1 ~ '^\s*[-+]?(\d+\.?\d*|\.\d+)([eE][-+]?\d+)?\s*$'
  THEN zelqor.zelqor_as_long($1::double precision, $2) ELSE zelqor.mismatch($1, 'whole number', $2)::integer END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_clng(double precision) RETURNS integer LANGUAGE sql STABLE PARALLEL SAFE AS
  $f$ SELECT zelqor.zelqor_as_long($1, '') $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_clng(text) RETURNS integer LANGUAGE sql STABLE PARALLEL SAFE AS
  $f$ SELECT zelqor.zelqor_as_long($1, '') $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_as_date(text, text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
  SELECT CASE WHEN $1 IS NULL OR zelqor.stored($1) IS NOT NULL THEN zelqor.stored($1)
  ELSE zelqor.mismatch($1, 'date', $2) END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_as_date(double precision, text) RETURNS text LANGUAGE sql STABLE PARALLEL SAFE
AS $f$ SELECT CASE WHEN $1 IS NOT NULL THEN zelqor.mismatch(zelqor.zelqor_str($1), 'date', $2) END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_cdate(text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS
  $f$ SELECT zelqor.zelqor_as_date($1, '') $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_cdate(double precision) RETURNS text LANGUAGE sql STABLE PARALLEL SAFE AS
  $f$ SELECT zelqor.zelqor_as_date($1, '') $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_as_text(t text, size integer, named text) RETURNS text LANGUAGE plpgsql IMMUTABLE
PARALLEL SAFE AS $f$ BEGIN
  IF size > 0 AND zelqor.zelqor_len(t) > size THEN
    RAISE EXCEPTION 'The text is too long for the column ''%'', which holds % characters.', named, size
      USING ERRCODE = 'ZQ002';
  END IF;
  RETURN t;
END $f$;
CREATE OR REPLACE FUNCTION zelqor.zelqor_val(text) RETURNS double precision LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$
  SELECT CASE WHEN $1 IS NULL THEN NULL ELSE coalesce(substring(replace($1, ' ', '')
    from '^[-+]?(?:\d+\.?\d*|\.\d+)(?:[eE][-+]?\d+)?')::double precision, 0) END $f$;
)sql";
} // namespace Server_Functions
