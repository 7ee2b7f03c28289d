-- What each schema of books begins with: the alphabet, the types of columns, and the functions that the
-- dialect's writer calls, which answer as those of the file do.
--
-- A text's letters are compared by their codes wherever a function looks into it: the alphabet's own order
-- takes no patterns. A function that cannot convert or calculate fails with the code VD001 and a Turkish
-- sentence.

CREATE COLLATION turkish (provider = icu, locale = 'tr-u-ks-level2', deterministic = false);
CREATE COLLATION turkish_case (provider = icu, locale = 'tr');
CREATE COLLATION any_case (provider = icu, locale = 'und');

CREATE DOMAIN whole_column AS bigint;
CREATE DOMAIN small_column AS bigint;
CREATE DOMAIN boolean_column AS bigint;
CREATE DOMAIN number_column AS double precision;
CREATE DOMAIN text_column AS text COLLATE turkish;
CREATE DOMAIN memo_column AS text COLLATE turkish;
CREATE DOMAIN date_column AS text COLLATE "C";

-- Volatile, or the planner would call it in branches that are never taken.
CREATE FUNCTION vd_fail(sentence text) RETURNS bigint LANGUAGE plpgsql VOLATILE AS $$
BEGIN
    RAISE EXCEPTION USING ERRCODE = 'VD001', MESSAGE = sentence;
END $$;

-- The number that a text reads as: "." is dropped wherever it stands, "," is the decimal sign, a leading or
-- trailing "-" negates. Null where it is none.
CREATE FUNCTION vd_read(given text) RETURNS numeric LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    plain text COLLATE "C" := replace(btrim(given COLLATE "C", ' '), '.', '');
    part text[] COLLATE "C";
BEGIN
    IF plain ~ '^[0-9]{1,18}$' THEN RETURN plain::bigint; END IF;
    part := regexp_match(plain, '^(-?)([0-9]*)(?:,([0-9]*))?(?:(-)|E([-+][0-9]{1,3}))?$');
    IF part IS NULL OR part[2] || coalesce(part[3], '') = '' OR (part[1] = '-' AND part[4] = '-') THEN
        RETURN NULL;
    END IF;
    RETURN (CASE WHEN part[1] = '-' OR part[4] = '-' THEN '-' ELSE '' END || '0' || part[2] || '.' ||
            coalesce(part[3], '') || '0' || coalesce('E' || part[5], ''))::numeric;
END $$;

CREATE FUNCTION vd_double(given numeric) RETURNS float8 LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF abs(given) > 1.797693134862315e308 THEN PERFORM vd_fail('Taşma'); END IF;
    IF abs(given) < 1e-300 THEN RETURN 0; END IF;
    RETURN given;
END $$;

CREATE FUNCTION vd_number(given text) RETURNS float8 LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    number numeric := vd_read(given);
BEGIN
    IF number IS NULL THEN
        PERFORM vd_fail('Veri türü uyuşmuyor: "' || left(given, 60) || '" sayı olarak okunamadı.');
    END IF;
    RETURN vd_double(number);
END $$;
CREATE FUNCTION vd_number(given float8) RETURNS float8 LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS 'SELECT given';

-- The leading digits with "." as the decimal sign, blanks skipped.
CREATE FUNCTION vd_val(given text) RETURNS float8 LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $$
DECLARE
    plain text COLLATE "C" := given;
    part text[] COLLATE "C";
BEGIN
    IF plain IS NULL THEN RETURN 0; END IF;
    IF plain ~ '^[0-9]{1,15}$' THEN RETURN plain::bigint; END IF;
    part := regexp_match(replace(plain, ' ', ''), '^([-+]?)([0-9]*)(?:[.]([0-9]*))?');
    RETURN vd_double(least((CASE WHEN part[1] = '-' THEN '-' ELSE '' END || '0' || part[2] || '.' ||
                            coalesce(part[3], '') || '0')::numeric, 1.797693134862315e308));
END $$;

-- Half to even.
CREATE FUNCTION vd_within(given float8, most bigint) RETURNS bigint LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF round(given) NOT BETWEEN -most - 1 AND most THEN PERFORM vd_fail('Taşma'); END IF;
    RETURN round(given);
END $$;
CREATE FUNCTION vd_long(given float8) RETURNS bigint LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS
    'SELECT vd_within(given, 2147483647)';
CREATE FUNCTION vd_integer(given float8) RETURNS bigint LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS
    'SELECT vd_within(given, 32767)';

-- On the decimal value, which are the fifteen digits that a double holds for certain; half to even.
CREATE FUNCTION vd_round(given float8, places float8 DEFAULT 0) RETURNS float8
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    decimals bigint := vd_long(places);
    scaled numeric;
BEGIN
    IF decimals < 0 THEN PERFORM vd_fail('Geçersiz yordam çağrısı veya bağımsız değişken'); END IF;
    IF given = trunc(given) THEN RETURN given; END IF;
    scaled := given::numeric * ('1e' || least(decimals, 15))::numeric;
    IF abs(scaled - trunc(scaled)) = 0.5 THEN
        scaled := 2 * round(scaled * 0.5);
    ELSE
        scaled := round(scaled);
    END IF;
    RETURN scaled * ('1e-' || least(decimals, 15))::numeric;
END $$;

CREATE FUNCTION vd_divide(dividend float8, divisor float8) RETURNS float8
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF divisor = 0 THEN PERFORM vd_fail('Sıfıra bölme'); END IF;
    RETURN dividend / divisor;
END $$;

-- "+" where only the values tell: two texts join, a text beside a number is read as one.
CREATE FUNCTION vd_add(one text, other text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS 'SELECT one || other';
CREATE FUNCTION vd_add(one text, other float8) RETURNS float8 LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    number numeric := vd_read(one);
BEGIN
    IF number IS NULL THEN PERFORM vd_fail('Tür uyuşmazlığı'); END IF;
    RETURN vd_double(number) + other;
END $$;
CREATE FUNCTION vd_add(one float8, other text) RETURNS float8 LANGUAGE sql IMMUTABLE PARALLEL SAFE AS 'SELECT vd_add(other, one)';
CREATE FUNCTION vd_add(one float8, other float8) RETURNS float8 LANGUAGE sql IMMUTABLE PARALLEL SAFE AS 'SELECT one + other';

-- A number as the program shows it: "," before the decimals, fifteen digits, an exponent only where the number
-- is too large or too small to stand in full.
CREATE FUNCTION vd_text(given float8) RETURNS text LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    number numeric;
    plain text;
    digits text;
    exponent int;
BEGIN
    IF given = trunc(given) AND abs(given) < 1e15 THEN RETURN given::bigint; END IF;
    number := trim_scale(given::numeric);
    IF abs(number) < 1e15 AND (abs(number) >= 0.0001 OR scale(number) <= 15) THEN
        RETURN replace(number::text, '.', ',');
    END IF;
    plain := abs(number)::text;
    digits := rtrim(ltrim(replace(plain, '.', ''), '0'), '0');
    exponent := CASE WHEN abs(number) >= 1 THEN strpos(plain || '.', '.') - 2
                     ELSE 1 - (length(plain) - length(ltrim(replace(plain, '.', ''), '0'))) END;
    RETURN CASE WHEN number < 0 THEN '-' ELSE '' END || left(digits, 1) ||
           CASE WHEN length(digits) > 1 THEN ',' || substr(digits, 2) ELSE '' END ||
           CASE WHEN exponent < 0 THEN 'E-' ELSE 'E+' END || lpad(abs(exponent)::text, greatest(2, length(abs(exponent)::text)), '0');
END $$;
CREATE FUNCTION vd_text(given bigint) RETURNS text LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS 'SELECT given::text';
CREATE FUNCTION vd_text(given text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS 'SELECT given';

CREATE FUNCTION vd_mid(given text, start float8, count float8 DEFAULT 2147483647) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    first bigint := vd_long(start);
    letters bigint := vd_long(count);
BEGIN
    IF first < 1 OR letters < 0 THEN PERFORM vd_fail('Geçersiz yordam çağrısı veya bağımsız değişken'); END IF;
    RETURN substr(given, first::int, least(letters, 2147483647 - first)::int);
END $$;
CREATE FUNCTION vd_len(given text) RETURNS bigint LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS 'SELECT length(given)::bigint';
CREATE FUNCTION vd_ucase(given text) RETURNS text LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS
    'SELECT upper(given COLLATE turkish_case)';

-- Letters without their case.
CREATE FUNCTION vd_fold(given text) RETURNS text LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
    SELECT translate(lower(translate(given, 'Iİ', 'ıi') COLLATE any_case), 'ςµſ', 'σμs')
$$;
CREATE FUNCTION vd_like(pattern text, given text) RETURNS boolean LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
    SELECT (vd_fold(given) COLLATE "C") LIKE (vd_fold(pattern) COLLATE "C") ESCAPE ''
$$;

CREATE FUNCTION vd_day(year int, month int, day int) RETURNS timestamp LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS $$
    SELECT CASE WHEN year BETWEEN 100 AND 9999 AND month BETWEEN 1 AND 12 AND day BETWEEN 1 AND 31
                     AND day <= extract(day FROM make_date(year, month, 1) + interval '1 month' - interval '1 day')
                THEN make_timestamp(year, month, day, 0, 0, 0) END
$$;

-- The moment of a stored date, or of a text in the order day, month, year; where that is no day: month, day,
-- year. Null where it is none.
CREATE FUNCTION vd_moment(given text) RETURNS timestamp LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    part text[] COLLATE "C" := regexp_match(given COLLATE "C",
        '^ *([0-9]{1,2}|[0-9]{4})[-/.,]([0-9]{1,2})[-/.,]([0-9]{1,2}|[0-9]{4})(?: +([0-9]{1,2}):([0-9]{1,2})(?::([0-9]{1,2}))?)? *$');
    one int := part[1]; two int := part[2]; three int := part[3]; year int;
    time int[] := ARRAY[coalesce(part[4], '0'), coalesce(part[5], '0'), coalesce(part[6], '0')]::int[];
    day timestamp;
BEGIN
    IF part IS NULL OR time[1] > 23 OR time[2] > 59 OR time[3] > 59 THEN RETURN NULL; END IF;
    IF length(part[1]) = 4 THEN
        IF length(part[3]) = 4 THEN RETURN NULL; END IF;
        day := vd_day(one, two, three);
    ELSE
        year := three + CASE WHEN length(part[3]) = 4 THEN 0 WHEN three < 30 THEN 2000 ELSE 1900 END;
        day := coalesce(vd_day(year, two, one), vd_day(year, one, two));
    END IF;
    RETURN day + make_interval(hours => time[1], mins => time[2], secs => time[3]);
END $$;

CREATE FUNCTION vd_stored(given timestamp) RETURNS text LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS
    $$ SELECT to_char(given, 'YYYY-MM-DD HH24:MI:SS') $$;

CREATE FUNCTION vd_date(given text) RETURNS text LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    moment timestamp := vd_moment(given);
BEGIN
    IF moment IS NULL THEN
        PERFORM vd_fail('Veri türü uyuşmuyor: "' || left(given, 60) || '" tarih olarak okunamadı.');
    END IF;
    RETURN vd_stored(moment);
END $$;

-- Seconds since day zero.
CREATE FUNCTION vd_seconds(given text) RETURNS bigint LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    moment timestamp := vd_moment(given);
BEGIN
    IF moment IS NULL THEN PERFORM vd_fail('Tür uyuşmazlığı'); END IF;
    RETURN extract(epoch FROM moment - timestamp '1899-12-30')::bigint;
END $$;
CREATE FUNCTION vd_days(given text) RETURNS float8 LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE AS
    'SELECT vd_seconds(given) / 86400::float8';

CREATE FUNCTION vd_adddays(given text, days float8) RETURNS text LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    later float8 := vd_seconds(given) + round((days * 86400)::numeric)::float8;
BEGIN
    IF later NOT BETWEEN -56802297600 AND 255611462399 THEN PERFORM vd_fail('Taşma'); END IF;
    RETURN vd_stored(timestamp '1899-12-30' + make_interval(secs => later));
END $$;
CREATE FUNCTION vd_date(given float8) RETURNS text LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
BEGIN
    IF given * 86400 NOT BETWEEN -56802297600 AND 255611462399 THEN
        PERFORM vd_fail('Veri türü uyuşmuyor: "' || given || '" tarih olarak okunamadı.');
    END IF;
    RETURN vd_adddays('1899-12-30 00:00:00', given);
END $$;

-- "dd/MM/yyyy", and the time where it is not midnight.
CREATE FUNCTION vd_date_text(given text) RETURNS text LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
    stored text COLLATE "C" := given;
BEGIN
    IF stored !~ '^[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}$' OR vd_moment(stored) IS NULL THEN
        RETURN stored;
    END IF;
    RETURN substr(stored, 9, 2) || '/' || substr(stored, 6, 2) || '/' || left(stored, 4) ||
           CASE WHEN right(stored, 8) = '00:00:00' THEN '' ELSE substr(stored, 11) END;
END $$;

-- The program's clock, which it says before a statement that asks for it.
CREATE FUNCTION vd_now() RETURNS text LANGUAGE sql STABLE PARALLEL RESTRICTED AS
    $$ SELECT coalesce(nullif(current_setting('veldona.now', true), ''), vd_stored(localtimestamp(0))) $$;
CREATE FUNCTION vd_today() RETURNS text LANGUAGE sql STABLE PARALLEL RESTRICTED AS
    $$ SELECT left(vd_now(), 10) || ' 00:00:00' $$;

-- A counter that a row brings along, so that the next one is above it; for Null, the next one.
CREATE FUNCTION vd_counter(table_name text, given bigint) RETURNS bigint LANGUAGE plpgsql AS $$
DECLARE
    counter text := pg_get_serial_sequence(table_name, 'ID');
    last bigint;
BEGIN
    IF given IS NULL THEN RETURN nextval(counter); END IF;
    EXECUTE 'SELECT last_value FROM ' || counter INTO last;
    PERFORM setval(counter, greatest(given, last));
    RETURN given;
END $$;

-- The number of the last write of each session: how one learns what became of a write whose answer was lost.
CREATE TABLE "MSysKASA" ("KASA" text COLLATE "C" PRIMARY KEY, "NO" bigint NOT NULL, "ID" bigint,
                         "AN" timestamptz NOT NULL DEFAULT now());

-- Tells the other tills which table somebody wrote, behind a letter: E, rows came, each behind all others; D, rows
-- changed; S, rows went, or came with keys of their own. Equal words of one transaction are sent once.
CREATE FUNCTION vd_wrote() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
    PERFORM pg_notify(TG_TABLE_SCHEMA, TG_ARGV[0] || TG_TABLE_NAME);
    RETURN NULL;
END $$;
-- Keys that the counter gave are the last ones that it gave.
CREATE FUNCTION vd_came() RETURNS trigger LANGUAGE plpgsql AS $$
DECLARE
    counter regclass := pg_get_serial_sequence(format('%I.%I', TG_TABLE_SCHEMA, TG_TABLE_NAME), 'ID');
    came record;
BEGIN
    SELECT count(*) AS rows, min("ID") AS lowest INTO came FROM came_rows;
    IF came.rows > 0 THEN
        PERFORM pg_notify(TG_TABLE_SCHEMA, CASE WHEN came.lowest > pg_sequence_last_value(counter) - came.rows THEN 'E'
                                                ELSE 'S' END || TG_TABLE_NAME);
    END IF;
    RETURN NULL;
END $$;

-- The shop's key of the journal, and its two pads. The tills read the key, for the file of a backup, and not the pads,
-- which are made of it and of the program.
CREATE TABLE "MSysGUNLUK" ("ANAHTAR" text NOT NULL, "IC" bytea NOT NULL, "DIS" bytea NOT NULL);
-- What a till has to note in the journal comes through here; no row stays.
CREATE TABLE "MSysGUNLUKNOT" ("NE" text);

-- What is sealed of a value: its length before it, else two could be told from other two only by where one ends.
CREATE FUNCTION vd_sealed(given text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS
    $$ SELECT coalesce(octet_length(given)::text || ':' || given, '-') $$;

-- The entry behind the newest one. Who and where is said by the program before its write (veldona.act), and stands in
-- the first entry of an act alone; what another program writes is named by its connection.
CREATE FUNCTION vd_journal_entry(kind text, table_name text, row_key bigint, before text, after text) RETURNS void
LANGUAGE plpgsql AS $$
DECLARE
    head record;
    shop record;
    act text[] := string_to_array(current_setting('veldona.act', true), E'\x1f');
    number text; moment text; who text[];
    place bigint; sealed bytea;
BEGIN
    IF coalesce(array_length(act, 1), 0) <> 7 THEN
        act := ARRAY['sunucu-' || pg_backend_pid() || '-' || txid_current(), '',
                     current_setting('application_name'), coalesce(host(inet_client_addr()), ''), session_user, '', ''];
    END IF;
    number := act[1]; moment := coalesce(nullif(act[2], ''), vd_stored(localtimestamp(0)));
    SELECT "ID", "ISLEM", "OZET" INTO head FROM "GUNLUK" ORDER BY "ID" DESC NULLS LAST LIMIT 1;
    SELECT "IC", "DIS" INTO STRICT shop FROM "MSysGUNLUK";
    place := coalesce(head."ID", 0) + 1;
    IF head."ISLEM" COLLATE "C" IS DISTINCT FROM number COLLATE "C" THEN who := act[3:7]; END IF;
    sealed := sha256(shop."IC" || convert_to(coalesce(head."OZET", '') || vd_sealed(place::text) || vd_sealed(number) ||
        vd_sealed(moment) || vd_sealed(who[1]) || vd_sealed(who[2]) || vd_sealed(who[3]) || vd_sealed(who[4]) ||
        vd_sealed(who[5]) || vd_sealed(table_name) || vd_sealed(kind) || vd_sealed(row_key::text) || vd_sealed(before) ||
        vd_sealed(after), 'UTF8'));
    INSERT INTO "GUNLUK" VALUES (place, number, moment, who[1], who[2], who[3], who[4], who[5], table_name, kind, row_key,
        before, after, left(encode(sha256(shop."DIS" || sealed), 'hex'), 32));
END $$;

-- Runs as the owner, since no till may write to the journal; nothing is looked up but in the books. The lock is the one
-- that a till's write holds already: the entries of two never come between each other.
CREATE FUNCTION vd_journal() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path = pg_catalog, pg_temp AS $$
DECLARE
    was text; row_now text; row_key bigint;
BEGIN
    PERFORM set_config('search_path', quote_ident(TG_TABLE_SCHEMA) || ', pg_temp', true);
    PERFORM pg_advisory_xact_lock(7645, (quote_ident(TG_TABLE_SCHEMA)::regnamespace)::oid::bigint::int);
    IF TG_TABLE_NAME = 'MSysGUNLUKNOT' THEN
        PERFORM vd_journal_entry('N', NULL, NULL, NULL, NEW."NE");
        RETURN NULL;
    END IF;
    IF TG_OP <> 'INSERT' THEN was := row_to_json(OLD)::text; row_key := OLD."ID"; END IF;
    IF TG_OP <> 'DELETE' THEN row_now := row_to_json(NEW)::text; row_key := NEW."ID"; END IF;
    IF TG_OP = 'UPDATE' THEN
        IF was = row_now THEN RETURN NULL; END IF;
        SELECT '{' || string_agg(to_json(o.key)::text || ':' || o.value::text, ',' ORDER BY o.place) || '}',
               '{' || string_agg(to_json(o.key)::text || ':' || n.value::text, ',' ORDER BY o.place) || '}'
        INTO was, row_now
        FROM json_each(was::json) WITH ORDINALITY o(key, value, place)
        JOIN json_each(row_now::json) WITH ORDINALITY n(key, value, place) USING (place)
        WHERE o.place = 1 OR o.value::text <> n.value::text;
    END IF;
    PERFORM vd_journal_entry(CASE TG_OP WHEN 'INSERT' THEN 'E' WHEN 'UPDATE' THEN 'D' ELSE 'S' END, TG_TABLE_NAME, row_key,
                             was, row_now);
    RETURN NULL;
END $$;
-- A till that could hang it on a table of its own would run what stands there as the owner.
REVOKE ALL ON FUNCTION vd_journal() FROM PUBLIC;
CREATE TRIGGER vd_journal BEFORE INSERT ON "MSysGUNLUKNOT" FOR EACH ROW EXECUTE FUNCTION vd_journal();
