import time

def main():
    for i in range(1, 10000001):
        pass
    return i

start = time.process_time()
result = main()
print(time.process_time() - start, result)
